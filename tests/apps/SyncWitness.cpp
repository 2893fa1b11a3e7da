// SPDX-License-Identifier: Apache-2.0
// Preloaded into the command: writes the calls of fsync() and renameat() to the file that
// CORVANE_WITNESS_LOG names, and lets fsync() of a file fail if CORVANE_WITNESS_FAIL is set.
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

void Note(const char* line)
{
    const char* const log = std::getenv("CORVANE_WITNESS_LOG");
    const int file = log == nullptr ? -1 : open(log, O_WRONLY | O_CREAT | O_APPEND, 0600);
    if (file < 0 || write(file, line, std::strlen(line)) < 0)
        std::abort();
    close(file);
}

template <typename Function>
Function Real(const char* name)
{
    void* const symbol = dlsym(RTLD_NEXT, name);
    Function function = nullptr;
    std::memcpy(&function, &symbol, sizeof function);
    return function;
}

} // namespace

extern "C" int fsync(int descriptor)
{
    struct stat state = {};
    const bool isFolder = fstat(descriptor, &state) == 0 && S_ISDIR(state.st_mode);
    Note(isFolder ? "fsync folder\n" : "fsync file\n");
    if (!isFolder && std::getenv("CORVANE_WITNESS_FAIL") != nullptr) {
        errno = EIO;
        return -1;
    }
    return Real<int (*)(int)>("fsync")(descriptor);
}

extern "C" int renameat(int from, const char* name, int to, const char* newName) noexcept
{
    Note("rename\n");
    return Real<int (*)(int, const char*, int, const char*)>("renameat")(from, name, to, newName);
}
