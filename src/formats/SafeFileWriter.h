#pragma once

#include "platform/HeapBlock.h"

#include <cstddef>
#include <cstdint>
#include <string>

// Writes a file the safe way: everything goes to a new temporary file beside
// the target, and only a complete write whose every write call and close
// succeeded is renamed over the target. Until Commit succeeds the old file is
// untouched; a writer destroyed without a successful Commit deletes its
// temporary file. Writes are buffered; a failure is sticky.
//
// What is at the path decides where the bytes go:
//  - nothing, or a regular file the user may write: the path itself;
//  - a symbolic link: the file the chain of links finally names, so saving
//    through a link updates the user's real file and keeps the link;
//  - a folder, FIFO, device or socket, or a read-only file: nothing is
//    written and the failure reason says why.
// The temporary file is created exclusively (never an existing file) under a
// short hidden name with the process id, ".tamrick-PID-N.tmp", so a long file
// name still fits and a temporary left by a killed process is recognised: it
// is removed by the next save to the same folder once its process is gone.
// The new file keeps the old one's permission bits and, where the user may
// set it, its group.
class SafeFileWriter {
public:
    explicit SafeFileWriter(std::string target);
    ~SafeFileWriter();
    SafeFileWriter(const SafeFileWriter&) = delete;
    SafeFileWriter& operator=(const SafeFileWriter&) = delete;

    // Creates the temporary file; false when the target cannot be written.
    bool Open();
    // Appends bytes; false once any write has failed.
    bool Write(const void* data, std::size_t bytes);
    // Flushes, closes and moves the temporary file over the target. False
    // (and the temporary file deleted) if anything failed on the way.
    bool Commit();
    // Closes and deletes the temporary file.
    void Abandon();
    bool Failed() const { return m_failed; }
    // The file the bytes finally go to (the target with links followed).
    const std::string& FinalPath() const { return m_final; }
    const std::string& TempPath() const { return m_temp; }

    // Why the last failed save of this thread failed, in the system's words
    // ("No space left on device", "Permission denied", ...); empty after a
    // success.
    static const std::string& LastFailure();
    static void SetLastFailure(std::string reason);

    // Test hook: after `bytes` more bytes have reached files, every write fails
    // as if the disk were full. A negative value switches it off.
    static void FailWritesAfter(long long bytes);

private:
    bool Fail(int error);
    bool Fail(const char* reason);
    bool ChooseFinalPath();
    bool CreateTemporary();
    void KeepMetadata();
    bool Flush();
    bool WriteToFile(const std::uint8_t* data, std::size_t bytes);

    std::string m_target;
    std::string m_final;
    std::string m_temp;
    int m_fd = -1;
    bool m_failed = false;
    bool m_hadOld = false;
    unsigned m_oldMode = 0;
    unsigned m_oldGroup = 0;
    platform::HeapBlock m_buffer;
    std::size_t m_buffered = 0;
};
