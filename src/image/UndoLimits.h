#pragma once

#include "image/CUndoHistory.h"

#include <cstdint>

// How many undo steps and how much memory the history keeps, as stored under
// "MainSection"/"UndoSteps" and "MainSection"/"UndoMemoryMB". The window and
// the command-line tool read the same settings.
namespace undolimits {

inline constexpr const char* kSection = "MainSection";
inline constexpr const char* kStepsKey = "UndoSteps";
inline constexpr const char* kMemoryKey = "UndoMemoryMB";
inline constexpr int kMinSteps = 1;
inline constexpr int kMaxSteps = 1000;
inline constexpr int kDefaultSteps = 100;
inline constexpr int kMinMemoryMB = 16;
inline constexpr int kMaxMemoryMB = 65536;

// A quarter of `physicalBytes`, at most 4 GiB, at least kMinMemoryMB.
int DefaultMemoryMB(std::uint64_t physicalBytes);
// The stored values, clamped to their ranges (the memory default from this
// machine's physical memory).
int StoredSteps();
int StoredMemoryMB();
CUndoHistory::Limits Stored();
CUndoHistory::Limits Make(int steps, int memoryMB);

} // namespace undolimits
