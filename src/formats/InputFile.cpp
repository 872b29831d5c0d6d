#include "formats/InputFile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

InputFile::~InputFile() {
    Close();
}

bool InputFile::Open(const std::string& path) {
    Close();
    // Non-blocking so that opening a FIFO without a writer returns at once.
    const int fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) {
        return false;
    }
    struct stat info {};
    if (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode)) {
        ::close(fd);
        return false;
    }
    ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) & ~O_NONBLOCK);
    m_fd = fd;
    m_size = static_cast<std::uint64_t>(info.st_size);
    return true;
}

void InputFile::Close() {
    if (m_fd >= 0) {
        ::close(m_fd);
        m_fd = -1;
    }
    m_size = 0;
}

int InputFile::Release() {
    const int fd = m_fd;
    m_fd = -1;
    m_size = 0;
    return fd;
}

std::size_t InputFile::ReadSome(void* dst, std::size_t bytes) {
    if (m_fd < 0) {
        return 0;
    }
    auto* out = static_cast<std::uint8_t*>(dst);
    std::size_t done = 0;
    while (done < bytes) {
        const ssize_t got = ::read(m_fd, out + done, bytes - done);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got <= 0) {
            break;
        }
        done += static_cast<std::size_t>(got);
    }
    return done;
}

bool InputFile::Read(void* dst, std::size_t bytes) {
    return ReadSome(dst, bytes) == bytes;
}

bool InputFile::IsRegularFile(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
}
