// The search reports in their three dialects.
#include "engine/search_report.h"

#include <gtest/gtest.h>
