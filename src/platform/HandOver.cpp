#include "platform/HandOver.h"

#include <cerrno>
#include <cstring>
#include <iostream>
#include <string>
#include <vector>

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

#ifdef _WIN32
// _spawnv joins the arguments with blanks as they are: each one is quoted so
// that the program started reads it back whole.
std::string Quoted(const std::string& a) {
    if (!a.empty() && a.find_first_of(" \t\"") == std::string::npos) return a;
    std::string out = "\"";
    std::size_t slashes = 0;
    for (char c : a) {
        if (c == '\\') {
            ++slashes;
            continue;
        }
        out.append(c == '"' ? 2 * slashes + 1 : slashes, '\\');
        slashes = 0;
        out += c;
    }
    out.append(2 * slashes, '\\');
    return out + '"';
}
#endif

} // namespace

int HandOver(const char* program, char** argv) {
    const std::string path = OwnFolder(argv[0]) + program;
#ifdef _WIN32
    std::vector<std::string> quoted;
    for (char** a = argv; *a; ++a)
        quoted.push_back(Quoted(*a));
    std::vector<const char*> args;
    for (const std::string& a : quoted)
        args.push_back(a.c_str());
    args.push_back(nullptr);
    const intptr_t status = _spawnv(_P_WAIT, path.c_str(), args.data());
    if (status != -1) return static_cast<int>(status);
#else
    execv(path.c_str(), argv);
#endif
    const int error = errno;
    std::cerr << "cintal-cli: no se puede ejecutar " << path << " (error " << error << ")\n";
    return 2;
}

} // namespace cintal::platform
