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
    {IDS_CLIPBOARD_KEEP_DATA,
     "There is image data on the Clipboard.\nDo you want this data to be available to other applications ?"},
    {IDS_SAVE_BEFORE_SENDING, "Save changes to the document before sending ?"},
    {IDS_NEW_SIZE_OUT_OF_RANGE, "The width or height pixels is out of the range(1..30000)."},
    {IDS_NEW_RESOLUTION_INVALID, "The resolution value can't be 0 or less than 0 !"},
    {IDS_NO_BLUETOOTH_SENDER, "No program for sending files to other devices is installed.\nInstall "
                              "bluez-tools or blueman to send pictures over Bluetooth."},
    {IDS_NO_MAIL_PROGRAM, "The e-mail program could not be started."},
    {IDS_HELP_MISSING, "The help page could not be found."},
    {IDS_UNABLE_TO_SAVE, "Unable to save this image file !"},
    {IDS_UNKNOWN_SAVE_TYPE, "Tamrick cannot save this type of file. Please name it with one of these extensions:"},
    {IDS_REVERT_DISCARDS_CHANGES, "Do you want to discard your changes and reload the picture from its file ?"},
    {IDS_SAVE_WITHOUT_TRANSPARENCY,
     "This file has transparent areas. Do you want to save it with the transparent areas filled with white ?"},
    {33, "2 x 2 Pixels"},
    {34, "3 x 3 Pixels"},
    {35, "4 x 4 Pixels"},
    {36, "5 x 5 Pixels"},
    {37, "6 x 6 Pixels"},
    {38, "7 x 7 Pixels"},
    {39, "8 x 8 Pixels"},
    {40, "All Channels"},
    {41, "Red Channel"},
    {42, "Green Channel"},
    {43, "Blue Channel"},
    {IDS_WIDTH_OUT_OF_RANGE, "The width is out of the range (1..30000 pixels)."},
    {IDS_HEIGHT_OUT_OF_RANGE, "The height is out of the range (1..30000 pixels)."},
    {IDS_RESOLUTION_OUT_OF_RANGE, "The resolution is out of the range (1..32767 DPI)."},
    {IDS_NOT_A_NUMBER, "Please enter a number."},
    {33000, "Select Rectangle"},
    {33001, "Select Ellipse"},
    {33002, "Select Pen"},
    {33003, "Select Free Hand"},
    {33004, "Select Magic Wand"},
    {33005, "Move Selection"},
    {33006, "Draw Rectangle"},
    {33007, "Draw Ellipse"},
    {33008, "Draw Line"},
    {33009, "Pen"},
    {33010, "Eraser"},
    {33011, "Air Brush"},
    {33012, "Smudge"},
    {33013, "Lighter"},
    {33014, "Darker"},
    {33015, "Blur"},
    {33016, "Sharpen"},
    {33017, "Hue"},
    {33018, "Water Pen"},
    {33019, "Oil Pen"},
    {33020, "Wax Pen"},
    {33021, "Carbon Pen"},
    {33022, "Chalk"},
    {33023, "Mick Pen"},
    {33024, "Color Pen"},
    {33025, "Flood Fill"},
    {33026, "Gradient Tool"},
    {33027, "Stamp Tool"},
    {33028, "Zoom In"},
    {33029, "Zoom Out"},
    {33030, "Input Text"},
    {33031, "Move Picture"},
    {33032, "Color Picker"},
    {33033, "Zoom Tool"},
    {33034, "Clone Stamp"},
    {33040, "Change the attribute of current tool"},
    {IDS_SIMILARITY_OUT_OF_RANGE, "Please enter an integer between 0 and 255."},
    {IDS_PEN_SIZE_OUT_OF_RANGE, "Please enter an integer between 1 and 32."},
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
