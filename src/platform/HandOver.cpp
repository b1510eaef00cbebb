#include "platform/HandOver.h"

#include <cerrno>
#include <cstring>
#include <iostream>
#include <string>

#ifdef _WIN32
#include <process.h>
#include <windows.h>
#else
#include <unistd.h>
#endif

namespace cintal::platform {

namespace {

// The running program's own folder, with its separator; the folder of argv[0]
// where the system doesn't say.
std::string OwnFolder(const char* argv0) {
    std::string self;
#ifdef _WIN32
    char buffer[MAX_PATH * 4];
    const DWORD n = GetModuleFileNameA(nullptr, buffer, sizeof buffer);
    if (n > 0 && n < sizeof buffer) self.assign(buffer, n);
#elif defined(__linux__)
    char buffer[4096];
    const ssize_t n = readlink("/proc/self/exe", buffer, sizeof buffer);
    if (n > 0 && static_cast<std::size_t>(n) < sizeof buffer)
        self.assign(buffer, static_cast<std::size_t>(n));
#endif
    if (self.empty() && argv0) self = argv0;
    const std::size_t slash = self.find_last_of("/\\");
    return slash == std::string::npos ? std::string() : self.substr(0, slash + 1);
}

} // namespace

int HandOver(const char* program, char** argv) {
    const std::string path = OwnFolder(argv[0]) + program;
#ifdef _WIN32
    const intptr_t status = _spawnv(_P_WAIT, path.c_str(), argv);
    if (status != -1) return static_cast<int>(status);
#else
    execv(path.c_str(), argv);
#endif
    const int error = errno;
    std::cerr << "cintal-cli: no se puede ejecutar " << path << " (error " << error << ")\n";
    return 2;
}

} // namespace cintal::platform
