#include "platform/StringTable.h"

#include <utility>

namespace platform {

namespace {
constexpr std::pair<int, std::string_view> kStrings[] = {
    {IDS_PRODUCT_NAME, "Tamrick"},
    {IDS_MEMORY_NOT_ENOUGH,
     "Memory is not enough !\nPlease close some pictures or applications to get  more memory space."},
    {IDS_UNDO_OUT_OF_MEMORY, "Out of memory ! The undo function can't be enable."},
    {IDS_DISK_SPACE_NOT_ENOUGH,
     "Your free disk space is not enough !\nPlease delete some files to get more space."},
    {IDS_UNABLE_TO_OPEN, "Unable to open this image file !"},
    {IDS_PUT_FLOATING_BEFORE_SAVE, "Do you want to put floating before saving it ?"},
    {IDS_SAVE_CHANGES_TO, "Save changes to "},
    {IDS_QUALITY_OUT_OF_RANGE, "The quality value is out of range (1..100)."},
    {IDS_IMAGE_TOO_LARGE, "This image file is too large, Tamrick have to load it in a smaller size."},
    {IDS_DEGREE_OUT_OF_RANGE, "The degree is out of the range (0..359)."},
    {IDS_CLIPBOARD_OPEN_FAILED, "Failed to open Clipboard !\nThe command that you issue does not complete."},
    {IDS_PASTE_TRUE_COLOR_ONLY, "Failed to paste image !\nOnly true color image can be pasted."},
};
} // namespace

std::string_view LoadString(int id) {
    for (const auto& [key, text] : kStrings) {
        if (key == id) {
            return text;
        }
    }
    return {};
}

} // namespace platform
