// The search reports in their three dialects.
#include <gtest/gtest.h>

#include "engine/search_report.h"
