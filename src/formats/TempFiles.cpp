#include "formats/TempFiles.h"

#include <cerrno>
#include <charconv>
#include <csignal>
#include <dirent.h>
#include <unistd.h>

namespace temp_files {

namespace {
constexpr const char* kPrefix = ".tamrick-";
constexpr const char* kSuffix = ".tmp";

bool ProcessIsGone(long pid) {
    return pid > 0 && ::kill(static_cast<pid_t>(pid), 0) != 0 && errno == ESRCH;
}
} // namespace

std::string FolderOf(const std::string& path) {
    const auto slash = path.rfind('/');
    if (slash == std::string::npos) {
        return ".";
    }
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string NameFor(const std::string& folder, unsigned n) {
    return folder + "/" + kPrefix + std::to_string(::getpid()) + "-" + std::to_string(n) + kSuffix;
}

bool Parse(const std::string& name, long& pid) {
    const std::string prefix = kPrefix;
    const std::string suffix = kSuffix;
    if (name.size() <= prefix.size() + suffix.size() || name.compare(0, prefix.size(), prefix) != 0 ||
        name.compare(name.size() - suffix.size(), suffix.size(), suffix) != 0) {
        return false;
    }
    const char* first = name.data() + prefix.size();
    const char* last = name.data() + name.size() - suffix.size();
    const auto [next, error] = std::from_chars(first, last, pid);
    long counter = 0;
    if (error != std::errc{} || next == last || *next != '-') {
        return false;
    }
    const auto [end, counterError] = std::from_chars(next + 1, last, counter);
    return counterError == std::errc{} && end == last;
}

void RemoveStale(const std::string& folder) {
    DIR* dir = ::opendir(folder.c_str());
    if (dir == nullptr) {
        return;
    }
    while (const dirent* entry = ::readdir(dir)) {
        long pid = 0;
        if (entry->d_name[0] == '.' && Parse(entry->d_name, pid) && ProcessIsGone(pid)) {
            ::unlinkat(::dirfd(dir), entry->d_name, 0);
        }
    }
    ::closedir(dir);
}

} // namespace temp_files
