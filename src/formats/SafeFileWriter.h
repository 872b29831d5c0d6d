#pragma once

#include "platform/HeapBlock.h"

#include <cstddef>
#include <cstdint>
#include <string>

// Writes a file the safe way: everything goes to the target path with ".xxx"
// appended, and only a complete write whose every write call and close
// succeeded is moved over the target. Until Commit succeeds the old file is
// untouched; a writer destroyed without a successful Commit deletes its
// temporary file. Writes are buffered; a failure is sticky.
class SafeFileWriter {
public:
    explicit SafeFileWriter(std::string target);
    ~SafeFileWriter();
    SafeFileWriter(const SafeFileWriter&) = delete;
    SafeFileWriter& operator=(const SafeFileWriter&) = delete;

    // Creates the temporary file anew; false when it cannot be created.
    bool Open();
    // Appends bytes; false once any write has failed.
    bool Write(const void* data, std::size_t bytes);
    // Flushes, closes and moves the temporary file over the target. False
    // (and the temporary file deleted) if anything failed on the way.
    bool Commit();
    // Closes and deletes the temporary file.
    void Abandon();
    bool Failed() const { return m_failed; }

    static std::string TempPath(const std::string& target) { return target + ".xxx"; }

    // Test hook: after `bytes` more bytes have reached files, every write fails
    // as if the disk were full. A negative value switches it off.
    static void FailWritesAfter(long long bytes);

private:
    bool Flush();
    bool WriteToFile(const std::uint8_t* data, std::size_t bytes);

    std::string m_target;
    std::string m_temp;
    int m_fd = -1;
    bool m_failed = false;
    platform::HeapBlock m_buffer;
    std::size_t m_buffered = 0;
};
