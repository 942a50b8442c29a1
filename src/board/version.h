// The program's version, as the banner, the protocols' greetings and the test suite show it.
#pragma once

constexpr const char* PELLIX_VERSION = "1.1b";
