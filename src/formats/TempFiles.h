#pragma once

#include <string>

// Names of the temporary files saves write beside their targets:
// ".tamrick-PID-N.tmp" in the target's folder. Short whatever the target's
// name, hidden, and tied to the process that made them.
namespace temp_files {

// The folder part of a path ("." for a bare name).
std::string FolderOf(const std::string& path);
// A fresh temporary name in `folder` for this process (counter `n`).
std::string NameFor(const std::string& folder, unsigned n);
// Removes temporaries in `folder` whose process no longer runs.
void RemoveStale(const std::string& folder);
// True when `name` (no folder) is one of our temporaries; sets its process id.
bool Parse(const std::string& name, long& pid);

} // namespace temp_files
