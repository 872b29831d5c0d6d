#pragma once

#include <string>

class CDibImage;

// Writes a picture in the format its file name asks for: the extension after
// the last dot, in any case: "bmp" for BMP, "gif" for GIF (reduced to 256
// colours first), "png" for PNG, "jpg" and "jpeg" for JPEG at `jpegQuality`
// (1..100). Any other extension, or none, writes nothing and fails with a
// reason that lists these. Every format goes through SafeFileWriter, so a
// failure leaves the old file as it was and no temporary file behind.
// Returns kFileOk, kFileFailed (SaveFailureReason says why) or
// kFileOutOfMemory.
int SavePicture(const std::string& path, const CDibImage& image, int jpegQuality);

// True when `path` names a type SavePicture writes.
bool IsSaveableName(const std::string& path);
// The message for a name of a type Tamrick does not write, listing the
// extensions it does.
std::string UnknownSaveTypeMessage();
// Why the last failed SavePicture of this thread failed: the system's reason
// ("No space left on device", "Permission denied", ...) or the unknown-type
// message.
std::string SaveFailureReason();
// The user's message for a failed save: "Unable to save this image file !"
// and the reason on the next line.
std::string SaveFailureMessage();
