#include "view/ToolTable.h"

#include "dialogs/HueOptionsDialog.h"
#include "paint/AToolPaintBlur.h"
#include "paint/AToolPaintColorPen.h"
#include "paint/AToolPaintFill.h"
#include "paint/AToolPaintGradient.h"
#include "paint/AToolPaintHue.h"
#include "paint/AToolPaintLine.h"
#include "paint/AToolPaintMove.h"
#include "paint/AToolPaintPen.h"
#include "paint/AToolPaintPicker.h"
#include "paint/AToolPaintRect.h"
#include "paint/AToolPaintSmudge.h"
#include "paint/AToolPaintSpray.h"
#include "paint/AToolPaintTablet.h"
#include "paint/AToolPaintZoom.h"
#include "platform/StringTable.h"
#include "view/CBriselView.h"

namespace tools {

namespace {
template <typename View> std::unique_ptr<CBriselView> Make() {
    return std::make_unique<View>();
}

// A tool class shared by several ids, made with the id's variant.
template <typename View, int Variant> std::unique_ptr<CBriselView> MakeVariant() {
    return std::make_unique<View>(Variant);
}

// Lighter, Darker and the artistic pens by their pen kind.
template <int Kind> std::unique_ptr<CBriselView> Tablet() {
    return std::make_unique<AToolPaintTablet>(Kind);
}
constexpr auto HueOptions = HueOptionsDialog::Open;

constexpr int kPenTool = 33009;

void NoOptions(QWidget*) {}
} // namespace

const std::vector<ToolInfo>& Table() {
    // Each row: id, palette button, factory, options dialog. Replace Make<CBriselView> by the
    // tool's own class (with its variant) when the class exists.
    static const std::vector<ToolInfo> table = {
        {33000, 0, Make<CBriselView>, nullptr},                // Select Rectangle
        {33001, 0, Make<CBriselView>, nullptr},                // Select Ellipse
        {33002, 0, Make<CBriselView>, nullptr},                // Select Pen
        {33003, 0, Make<CBriselView>, nullptr},                // Select Free Hand
        {33004, 0, Make<CBriselView>, nullptr},                // Select Magic Wand
        {33005, 0, Make<CBriselView>, nullptr},                // Move Selection
        {33006, 1, MakeVariant<AToolPaintRect, 0>, nullptr},   // Draw Rectangle
        {33007, 1, MakeVariant<AToolPaintRect, 1>, nullptr},   // Draw Ellipse
        {33008, 1, MakeVariant<AToolPaintLine, 1>, nullptr},   // Draw Line
        {33009, 2, MakeVariant<AToolPaintPen, 0>, nullptr},    // Pen
        {33010, 2, MakeVariant<AToolPaintPen, 1>, nullptr},    // Eraser
        {33011, 2, Make<AToolPaintSpray>, nullptr},            // Air Brush
        {33012, 2, Make<AToolPaintSmudge>, nullptr},           // Smudge
        {33013, 2, Tablet<2>, nullptr},                        // Lighter
        {33014, 2, Tablet<3>, nullptr},                        // Darker
        {33015, 2, MakeVariant<AToolPaintBlur, 1>, nullptr},   // Blur
        {33016, 2, MakeVariant<AToolPaintBlur, 0>, nullptr},   // Sharpen
        {33017, 2, Make<AToolPaintHue>, HueOptions},           // Hue
        {33018, 2, Tablet<7>, nullptr},                        // Water Pen
        {33019, 2, Tablet<12>, nullptr},                       // Oil Pen
        {33020, 2, Tablet<8>, nullptr},                        // Wax Pen
        {33021, 2, Tablet<9>, nullptr},                        // Carbon Pen
        {33022, 2, Tablet<10>, nullptr},                       // Chalk
        {33023, 2, Tablet<11>, nullptr},                       // Mick Pen
        {33024, 2, Make<AToolPaintColorPen>, nullptr},         // Color Pen
        {33025, 3, Make<AToolPaintFill>, nullptr},             // Flood Fill
        {33026, 3, Make<AToolPaintGradient>, nullptr},         // Gradient Tool
        {33027, -1, MakeVariant<AToolPaintPen, 0>, NoOptions}, // Stamp Tool: the plain pen
        {33028, 4, MakeVariant<AToolPaintZoom, 1>, nullptr},   // Zoom In
        {33029, 4, MakeVariant<AToolPaintZoom, 0>, nullptr},   // Zoom Out
        {33030, 5, Make<CBriselView>, nullptr},                // Input Text
        {33031, 6, Make<AToolPaintMove>, nullptr},             // Move Picture
        {33032, 7, Make<AToolPaintPicker>, nullptr},           // Color Picker
    };
    return table;
}

const ToolInfo* Find(int id) {
    for (const ToolInfo& tool : Table()) {
        if (tool.id == id) {
            return &tool;
        }
    }
    return nullptr;
}

bool IsToolId(int id) {
    return id >= kFirstToolId && id <= kLastToolId;
}

std::string Label(int id) {
    return std::string(platform::LoadString(id));
}

std::unique_ptr<CBriselView> CreateToolView(int id) {
    const ToolInfo* tool = Find(id);
    if (tool == nullptr) {
        tool = Find(kPenTool);
    }
    return tool->create();
}

bool OpenToolOptions(int id, QWidget* parent) {
    const ToolInfo* tool = Find(id);
    if (tool == nullptr || tool->options == nullptr) {
        return false;
    }
    tool->options(parent);
    return true;
}

bool HasToolOptions(int id) {
    const ToolInfo* tool = Find(id);
    return tool != nullptr && tool->options != nullptr && tool->options != NoOptions;
}

std::vector<int> ButtonMembers(int button) {
    std::vector<int> members;
    for (const ToolInfo& tool : Table()) {
        if (tool.paletteButton == button) {
            members.push_back(tool.id);
        }
    }
    return members;
}

int ButtonOf(int id) {
    const ToolInfo* tool = Find(id);
    return tool ? tool->paletteButton : -1;
}

} // namespace tools
