#pragma once

// Results of every file load and save: success, a file or format error (the
// caller shows "Unable to open this image file !" for a load), or lack of
// memory (the caller shows the memory message).
constexpr int kFileOk = 1;
constexpr int kFileFailed = 0;
constexpr int kFileOutOfMemory = -1;
