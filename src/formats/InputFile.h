#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

// A regular file opened for reading. Directories, FIFOs and devices are
// refused at Open, so that a reader never blocks on a pipe or reads a folder.
class InputFile {
public:
    InputFile() = default;
    ~InputFile();
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    bool Open(const std::string& path);
    void Close();
    // Reads exactly `bytes`; false on a short read or an error.
    bool Read(void* dst, std::size_t bytes);
    // Reads up to `bytes`; returns the count read (0 at the end or on error).
    std::size_t ReadSome(void* dst, std::size_t bytes);
    bool IsOpen() const { return m_fd >= 0; }
    // Size of the file when it was opened.
    std::uint64_t Size() const { return m_size; }
    int Descriptor() const { return m_fd; }
    // Hands the descriptor to someone else who will close it.
    int Release();

    static bool IsRegularFile(const std::string& path);

private:
    int m_fd = -1;
    std::uint64_t m_size = 0;
};
