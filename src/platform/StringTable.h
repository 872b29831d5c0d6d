#pragma once

#include <string_view>

namespace platform {

// Ids of the user-visible texts. The numbers are the program's own string ids;
// the texts (kept exactly as the user sees them, double blanks included) live
// in StringTable.cpp.
enum StringId : int {
    IDS_PRODUCT_NAME = 11,
    IDS_MEMORY_NOT_ENOUGH = 27,
    IDS_UNDO_OUT_OF_MEMORY = 32,
    IDS_DISK_SPACE_NOT_ENOUGH = 65,
    IDS_UNABLE_TO_OPEN = 85,
    IDS_PUT_FLOATING_BEFORE_SAVE = 107,
    IDS_SAVE_CHANGES_TO = 108,
    IDS_QUALITY_OUT_OF_RANGE = 124,
    IDS_IMAGE_TOO_LARGE = 126,
    IDS_DEGREE_OUT_OF_RANGE = 66,
    IDS_CLIPBOARD_OPEN_FAILED = 70,
    IDS_PASTE_TRUE_COLOR_ONLY = 71,
};

// The text of a string id; an empty view for an id the table does not hold.
std::string_view LoadString(int id);

} // namespace platform
