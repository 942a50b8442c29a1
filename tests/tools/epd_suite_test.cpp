// The EPD best-move suite, run as a user runs it.
#include <gtest/gtest.h>

#include "tools/epd_suite.h"
