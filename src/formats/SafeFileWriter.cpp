#include "formats/SafeFileWriter.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {
constexpr std::size_t kBufferBytes = 1 << 16;
std::atomic<long long> g_bytesBeforeFailure{-1};

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
} // namespace

void SafeFileWriter::FailWritesAfter(long long bytes) {
    g_bytesBeforeFailure.store(bytes < 0 ? -1 : bytes);
}

SafeFileWriter::SafeFileWriter(std::string target)
    : m_target(std::move(target)), m_temp(TempPath(m_target)) {}

SafeFileWriter::~SafeFileWriter() {
    Abandon();
}

bool SafeFileWriter::Open() {
    Abandon();
    m_failed = false;
    if (!m_buffer) {
        m_buffer = platform::HeapBlock::Allocate(kBufferBytes);
    }
    if (!m_buffer) {
        m_failed = true;
        return false;
    }
    m_fd = ::open(m_temp.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0666);
    if (m_fd < 0) {
        m_failed = true;
        return false;
    }
    // A replaced file keeps its permissions.
    struct stat old {};
    if (::stat(m_target.c_str(), &old) == 0 && S_ISREG(old.st_mode)) {
        ::fchmod(m_fd, old.st_mode & 07777);
    }
    return true;
}

bool SafeFileWriter::WriteToFile(const std::uint8_t* data, std::size_t bytes) {
    while (bytes > 0) {
        const std::size_t allowed = AllowedBytes(bytes);
        if (allowed == 0) {
            errno = ENOSPC;
            return false;
        }
        const ssize_t done = ::write(m_fd, data, allowed);
        if (done < 0 && errno == EINTR) {
            continue;
        }
        if (done <= 0) {
            return false;
        }
        data += done;
        bytes -= static_cast<std::size_t>(done);
    }
    return true;
}

bool SafeFileWriter::Flush() {
    if (m_buffered > 0 && !m_failed) {
        m_failed = !WriteToFile(m_buffer.data(), m_buffered);
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
        if (!Flush()) {
            return false;
        }
        m_failed = !WriteToFile(in, bytes);
        return !m_failed;
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
        return false;
    }
    const int fd = std::exchange(m_fd, -1);
    if (::close(fd) != 0) {
        m_failed = true;
        ::unlink(m_temp.c_str());
        return false;
    }
    // rename replaces the old file in one step; a directory or an unwritable
    // folder at the target refuses it and the old contents stay.
    if (::rename(m_temp.c_str(), m_target.c_str()) != 0) {
        m_failed = true;
        ::unlink(m_temp.c_str());
        return false;
    }
    return true;
}

void SafeFileWriter::Abandon() {
    if (m_fd >= 0) {
        ::close(std::exchange(m_fd, -1));
        ::unlink(m_temp.c_str());
    }
    m_buffered = 0;
}
