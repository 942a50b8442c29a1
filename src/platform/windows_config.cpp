// The configuration file on Windows: the profile functions read ".\pellix.ini". The path
// names the current directory on purpose: a bare file name would make Windows look in its
// own directory.
#include "platform/config.h"

#include <windows.h>

namespace {

constexpr const char* CONFIG_FILE = ".\\pellix.ini";

} // namespace

int configInt(const char* section, const char* key, int fallback) {
    return int(GetPrivateProfileIntA(section, key, fallback, CONFIG_FILE));
}

void configString(const char* section, const char* key, const char* fallback, char* out,
                  std::size_t size) {
    if (size == 0)
        return;
    GetPrivateProfileStringA(section, key, fallback, out, DWORD(size), CONFIG_FILE);
}
