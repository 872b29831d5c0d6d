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
    IDS_CLIPBOARD_KEEP_DATA = 110,
    IDS_SAVE_BEFORE_SENDING = 150,
    IDS_NEW_SIZE_OUT_OF_RANGE = 151,
    IDS_NEW_RESOLUTION_INVALID = 152,
    IDS_NO_BLUETOOTH_SENDER = 153,
    IDS_NO_MAIL_PROGRAM = 154,
    IDS_HELP_MISSING = 155,
    IDS_UNABLE_TO_SAVE = 156,
    IDS_UNKNOWN_SAVE_TYPE = 157,
    IDS_REVERT_DISCARDS_CHANGES = 158,
    IDS_SAVE_WITHOUT_TRANSPARENCY = 159,
    IDS_CELL_2X2 = 33, // "2 x 2 Pixels" .. "8 x 8 Pixels" up to 39
    IDS_CELL_8X8 = 39,
    IDS_CHANNEL_ALL = 40, // then red, green and blue up to 43
    IDS_WIDTH_OUT_OF_RANGE = 67,
    IDS_HEIGHT_OUT_OF_RANGE = 68,
    IDS_RESOLUTION_OUT_OF_RANGE = 105,
    IDS_NOT_A_NUMBER = 106,
    // Tool labels: the string with a tool's command id (33000..33032 and the
    // Clone Stamp's 33034), the zoom tools' group (33033) and the palette's
    // options button (33040).
    IDS_TOOL_FIRST = 33000,
    IDS_SIMILARITY_OUT_OF_RANGE = 33210,
    IDS_PEN_SIZE_OUT_OF_RANGE = 33211,
};

// The text of a string id; an empty view for an id the table does not hold.
std::string_view LoadString(int id);

} // namespace platform
