// The EPD best-move suite.
#include "tools/epd_suite.h"

int runTestSuite(const char*, int) { return 1; }
