#pragma once

#include <string>

namespace platform {

// The program's settings store: sections and keys with a default at every read.
// On Linux this is QSettings in its native format (an INI file in the user's
// configuration folder) under the organisation "Quorvane Systems Inc." and the
// application "Tamrick".
class Settings {
public:
    static int ReadInt(const char* section, const char* key, int defaultValue);
    static void WriteInt(const char* section, const char* key, int value);
    static std::string ReadString(const char* section, const char* key, const std::string& defaultValue);
    static void WriteString(const char* section, const char* key, const std::string& value);
    // Forgets a key, so that reads give their default again.
    static void Remove(const char* section, const char* key);

    // Tests and the command-line tool point the store at a folder of their own.
    static void UseFolder(const std::string& folder);
};

} // namespace platform
