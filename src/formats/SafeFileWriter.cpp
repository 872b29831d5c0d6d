#include "formats/SafeFileWriter.h"

#include "formats/TempFiles.h"

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {
constexpr std::size_t kBufferBytes = 1 << 16;
constexpr int kMostLinks = 40;
constexpr unsigned kMostTries = 100;
constexpr const char* kNotRegular = "It is not a regular file";
std::atomic<long long> g_bytesBeforeFailure{-1};
std::atomic<unsigned> g_tempCounter{0};
thread_local std::string g_lastFailure;

// Applies the test hook: how many of `bytes` may still be written.
std::size_t AllowedBytes(std::size_t bytes) {
    const long long budget = g_bytesBeforeFailure.load();
    if (budget < 0) {
        return bytes;
    }
    const auto allowed = static_cast<std::size_t>(budget) < bytes ? static_cast<std::size_t>(budget) : bytes;
    g_bytesBeforeFailure.store(budget - static_cast<long long>(allowed));
    return allowed;
}

// The name a chain of symbolic links finally points at (which need not exist
// yet); false with errno set when the chain is broken or loops.
bool FollowLinks(std::string path, std::string& final) {
    for (int hop = 0; hop < kMostLinks; ++hop) {
        struct stat info {};
        if (::lstat(path.c_str(), &info) != 0) {
            if (errno != ENOENT) {
                return false;
            }
            final = path;
            return true;
        }
        if (!S_ISLNK(info.st_mode)) {
            final = path;
            return true;
        }
        char target[PATH_MAX];
        const ssize_t length = ::readlink(path.c_str(), target, sizeof target);
        if (length < 0 || static_cast<std::size_t>(length) >= sizeof target) {
            return false;
        }
        const std::string next(target, static_cast<std::size_t>(length));
        path = next.starts_with('/') ? next : temp_files::FolderOf(path) + "/" + next;
    }
    errno = ELOOP;
    return false;
}
} // namespace

void SafeFileWriter::FailWritesAfter(long long bytes) {
    g_bytesBeforeFailure.store(bytes < 0 ? -1 : bytes);
}

const std::string& SafeFileWriter::LastFailure() {
    return g_lastFailure;
}

void SafeFileWriter::SetLastFailure(std::string reason) {
    g_lastFailure = std::move(reason);
}

SafeFileWriter::SafeFileWriter(std::string target) : m_target(std::move(target)) {}

SafeFileWriter::~SafeFileWriter() {
    Abandon();
}

bool SafeFileWriter::Fail(int error) {
    return Fail(std::strerror(error));
}

bool SafeFileWriter::Fail(const char* reason) {
    if (!m_failed) {
        SetLastFailure(reason);
    }
    m_failed = true;
    return false;
}

bool SafeFileWriter::Open() {
    Abandon();
    m_failed = false;
    if (!m_buffer) {
        m_buffer = platform::HeapBlock::Allocate(kBufferBytes);
    }
    if (!m_buffer) {
        return Fail(ENOMEM);
    }
    return ChooseFinalPath() && CreateTemporary();
}

// Follows links and refuses what is not a regular file the user may write.
bool SafeFileWriter::ChooseFinalPath() {
    if (!FollowLinks(m_target, m_final)) {
        return Fail(errno);
    }
    struct stat old {};
    m_hadOld = ::stat(m_final.c_str(), &old) == 0;
    if (!m_hadOld) {
        return errno == ENOENT || Fail(errno);
    }
    if (S_ISDIR(old.st_mode)) {
        return Fail(EISDIR);
    }
    if (!S_ISREG(old.st_mode)) {
        return Fail(kNotRegular);
    }
    // Root may write anything; a file without write bits is still read-only.
    if (::access(m_final.c_str(), W_OK) != 0 || (old.st_mode & 0222) == 0) {
        return Fail(EACCES);
    }
    m_oldMode = old.st_mode & 07777;
    m_oldGroup = old.st_gid;
    return true;
}

bool SafeFileWriter::CreateTemporary() {
    const std::string folder = temp_files::FolderOf(m_final);
    temp_files::RemoveStale(folder);
    for (unsigned attempt = 0; attempt < kMostTries; ++attempt) {
        m_temp = temp_files::NameFor(folder, g_tempCounter.fetch_add(1));
        m_fd = ::open(m_temp.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0666);
        if (m_fd >= 0) {
            KeepMetadata();
            return true;
        }
        if (errno != EEXIST) {
            return Fail(errno);
        }
    }
    return Fail(EEXIST);
}

// The replaced file's permission bits and, where allowed, its group.
void SafeFileWriter::KeepMetadata() {
    if (!m_hadOld) {
        return;
    }
    struct stat made {};
    if (::fstat(m_fd, &made) == 0 && made.st_gid != m_oldGroup) {
        [[maybe_unused]] const int ignored = ::fchown(m_fd, static_cast<uid_t>(-1), m_oldGroup);
    }
    ::fchmod(m_fd, m_oldMode);
}

bool SafeFileWriter::WriteToFile(const std::uint8_t* data, std::size_t bytes) {
    while (bytes > 0) {
        const std::size_t allowed = AllowedBytes(bytes);
        if (allowed == 0) {
            return Fail(ENOSPC);
        }
        const ssize_t done = ::write(m_fd, data, allowed);
        if (done < 0 && errno == EINTR) {
            continue;
        }
        if (done <= 0) {
            return Fail(done < 0 ? errno : ENOSPC);
        }
        data += done;
        bytes -= static_cast<std::size_t>(done);
    }
    return true;
}

bool SafeFileWriter::Flush() {
    if (m_buffered > 0 && !m_failed) {
        WriteToFile(m_buffer.data(), m_buffered);
    }
    m_buffered = 0;
    return !m_failed;
}

bool SafeFileWriter::Write(const void* data, std::size_t bytes) {
    if (m_fd < 0 || m_failed) {
        return false;
    }
    const auto* in = static_cast<const std::uint8_t*>(data);
    if (bytes >= kBufferBytes) {
        return Flush() && WriteToFile(in, bytes);
    }
    if (m_buffered + bytes > kBufferBytes && !Flush()) {
        return false;
    }
    std::memcpy(m_buffer.data() + m_buffered, in, bytes);
    m_buffered += bytes;
    return true;
}

bool SafeFileWriter::Commit() {
    if (m_fd < 0 || !Flush()) {
        Abandon();
        return Fail(EIO);
    }
    const int fd = std::exchange(m_fd, -1);
    // rename replaces the old file in one step; on any failure the old
    // contents stay and the temporary goes.
    if (::close(fd) != 0 || ::rename(m_temp.c_str(), m_final.c_str()) != 0) {
        const int error = errno;
        ::unlink(m_temp.c_str());
        return Fail(error);
    }
    SetLastFailure({});
    return true;
}

void SafeFileWriter::Abandon() {
    if (m_fd >= 0) {
        ::close(std::exchange(m_fd, -1));
        ::unlink(m_temp.c_str());
    }
    m_buffered = 0;
}
