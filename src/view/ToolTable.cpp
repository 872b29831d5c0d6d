#include "view/ToolTable.h"

#include "dialogs/MagicWandDialog.h"
#include "paint/AToolPaintText.h"
#include "platform/StringTable.h"
#include "selection/AToolSelectFree.h"
#include "selection/AToolSelectMagic.h"
#include "selection/AToolSelectMove.h"
#include "selection/AToolSelectOval.h"
#include "selection/AToolSelectPen.h"
#include "selection/AToolSelectRect.h"
#include "view/CBriselView.h"

namespace tools {

namespace {
template <typename View> std::unique_ptr<CBriselView> Make() {
    return std::make_unique<View>();
}

constexpr int kPenTool = 33009;

void NoOptions(QWidget*) {}
} // namespace

const std::vector<ToolInfo>& Table() {
    // Each row: id, palette button, factory, options dialog. Replace Make<CBriselView> by the
    // tool's own class (with its variant) when the class exists.
    static const std::vector<ToolInfo> table = {
        {33000, 0, Make<AToolSelectRect>, nullptr}, // Select Rectangle
        {33001, 0, Make<AToolSelectOval>, nullptr}, // Select Ellipse
        {33002, 0, Make<AToolSelectPen>, nullptr}, // Select Pen
        {33003, 0, Make<AToolSelectFree>, nullptr}, // Select Free Hand
        {33004, 0, Make<AToolSelectMagic>, OpenMagicWandOptions}, // Select Magic Wand
        {33005, 0, Make<AToolSelectMove>, nullptr}, // Move Selection
        {33006, 1, Make<CBriselView>, nullptr},    // Draw Rectangle
        {33007, 1, Make<CBriselView>, nullptr},    // Draw Ellipse
        {33008, 1, Make<CBriselView>, nullptr},    // Draw Line
        {33009, 2, Make<CBriselView>, nullptr},    // Pen
        {33010, 2, Make<CBriselView>, nullptr},    // Eraser
        {33011, 2, Make<CBriselView>, nullptr},    // Air Brush
        {33012, 2, Make<CBriselView>, nullptr},    // Smudge
        {33013, 2, Make<CBriselView>, nullptr},    // Lighter
        {33014, 2, Make<CBriselView>, nullptr},    // Darker
        {33015, 2, Make<CBriselView>, nullptr},    // Blur
        {33016, 2, Make<CBriselView>, nullptr},    // Sharpen
        {33017, 2, Make<CBriselView>, nullptr},    // Hue
        {33018, 2, Make<CBriselView>, nullptr},    // Water Pen
        {33019, 2, Make<CBriselView>, nullptr},    // Oil Pen
        {33020, 2, Make<CBriselView>, nullptr},    // Wax Pen
        {33021, 2, Make<CBriselView>, nullptr},    // Carbon Pen
        {33022, 2, Make<CBriselView>, nullptr},    // Chalk
        {33023, 2, Make<CBriselView>, nullptr},    // Mick Pen
        {33024, 2, Make<CBriselView>, nullptr},    // Color Pen
        {33025, 3, Make<CBriselView>, nullptr},    // Flood Fill
        {33026, 3, Make<CBriselView>, nullptr},    // Gradient Tool
        {33027, -1, Make<CBriselView>, NoOptions}, // Stamp Tool: the plain pen
        {33028, 4, Make<CBriselView>, nullptr},    // Zoom In
        {33029, 4, Make<CBriselView>, nullptr},    // Zoom Out
        {33030, 5, Make<AToolPaintText>, nullptr}, // Input Text
        {33031, 6, Make<CBriselView>, nullptr},    // Move Picture
        {33032, 7, Make<CBriselView>, nullptr},    // Color Picker
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
