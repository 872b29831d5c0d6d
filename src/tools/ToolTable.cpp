#include "tools/ToolTable.h"

#include "dialogs/CloneOptionsDialog.h"
#include "dialogs/EraserOptionsDialog.h"
#include "dialogs/FloodFillOptionsDialog.h"
#include "dialogs/GradientDialog.h"
#include "dialogs/HueOptionsDialog.h"
#include "dialogs/MagicWandDialog.h"
#include "dialogs/ShapeOptionsDialog.h"
#include "tools/paint/AToolPaintBlur.h"
#include "tools/paint/AToolPaintClone.h"
#include "tools/paint/AToolPaintColorPen.h"
#include "tools/paint/AToolPaintFill.h"
#include "tools/paint/AToolPaintGradient.h"
#include "tools/paint/AToolPaintHue.h"
#include "tools/paint/AToolPaintLine.h"
#include "tools/paint/AToolPaintMove.h"
#include "tools/paint/AToolPaintPen.h"
#include "tools/paint/AToolPaintPicker.h"
#include "tools/paint/AToolPaintRect.h"
#include "tools/paint/AToolPaintSmudge.h"
#include "tools/paint/AToolPaintSpray.h"
#include "tools/paint/AToolPaintTablet.h"
#include "tools/paint/AToolPaintText.h"
#include "tools/paint/AToolPaintZoom.h"
#include "platform/StringTable.h"
#include "tools/select/AToolSelectFree.h"
#include "tools/select/AToolSelectMagic.h"
#include "tools/select/AToolSelectMove.h"
#include "tools/select/AToolSelectOval.h"
#include "tools/select/AToolSelectPen.h"
#include "tools/select/AToolSelectRect.h"
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

// Painting tools and their options, named short so that the table keeps one
// aligned row per tool.
constexpr auto RectTool = MakeVariant<AToolPaintRect, 0>;
constexpr auto OvalTool = MakeVariant<AToolPaintRect, 1>;
constexpr auto LineTool = MakeVariant<AToolPaintLine, 1>;
constexpr auto PenTool = MakeVariant<AToolPaintPen, 0>;
constexpr auto EraserTool = MakeVariant<AToolPaintPen, 1>;
constexpr auto SelectRectTool = Make<AToolSelectRect>;
constexpr auto SelectOvalTool = Make<AToolSelectOval>;
constexpr auto SelectPenTool = Make<AToolSelectPen>;
constexpr auto SelectFreeTool = Make<AToolSelectFree>;
constexpr auto MagicWandTool = Make<AToolSelectMagic>;
constexpr auto SelectMoveTool = Make<AToolSelectMove>;
constexpr auto TextTool = Make<AToolPaintText>;
constexpr auto FillTool = Make<AToolPaintFill>;
constexpr auto GradientTool = Make<AToolPaintGradient>;
constexpr auto ZoomInTool = MakeVariant<AToolPaintZoom, 1>;
constexpr auto ZoomOutTool = MakeVariant<AToolPaintZoom, 0>;
constexpr auto MoveTool = Make<AToolPaintMove>;
constexpr auto PickerTool = Make<AToolPaintPicker>;
constexpr auto RectOptions = ShapeOptionsDialog::OpenForRectangle;
constexpr auto OvalOptions = ShapeOptionsDialog::OpenForEllipse;
constexpr auto EraserOptions = EraserOptionsDialog::Open;
constexpr auto FillOptions = FloodFillOptionsDialog::Open;
constexpr auto GradientOptions = GradientDialog::Open;

// The touch-up brushes and artistic pens (Lighter, Darker and the artistic
// pens are one class by pen kind).
constexpr auto SprayTool = Make<AToolPaintSpray>;
constexpr auto SmudgeTool = Make<AToolPaintSmudge>;
constexpr auto LighterTool = MakeVariant<AToolPaintTablet, 2>;
constexpr auto DarkerTool = MakeVariant<AToolPaintTablet, 3>;
constexpr auto BlurTool = MakeVariant<AToolPaintBlur, 1>;
constexpr auto SharpenTool = MakeVariant<AToolPaintBlur, 0>;
constexpr auto HueTool = Make<AToolPaintHue>;
constexpr auto WaterPenTool = MakeVariant<AToolPaintTablet, 7>;
constexpr auto OilPenTool = MakeVariant<AToolPaintTablet, 12>;
constexpr auto WaxPenTool = MakeVariant<AToolPaintTablet, 8>;
constexpr auto CarbonPenTool = MakeVariant<AToolPaintTablet, 9>;
constexpr auto ChalkTool = MakeVariant<AToolPaintTablet, 10>;
constexpr auto MickPenTool = MakeVariant<AToolPaintTablet, 11>;
constexpr auto ColorPenTool = Make<AToolPaintColorPen>;
constexpr auto HueOptions = HueOptionsDialog::Open;
constexpr auto CloneTool = Make<AToolPaintClone>;
constexpr auto CloneOptions = CloneOptionsDialog::Open;

constexpr int kPenTool = 33009;

void NoOptions(QWidget*) {}
} // namespace

const std::vector<ToolInfo>& Table() {
    // Each row: id, palette button, factory (with the tool's variant), options dialog.
    static const std::vector<ToolInfo> table = {
        {33000, 0, SelectRectTool, nullptr},             // Select Rectangle
        {33001, 0, SelectOvalTool, nullptr},             // Select Ellipse
        {33002, 0, SelectPenTool, nullptr},              // Select Pen
        {33003, 0, SelectFreeTool, nullptr},             // Select Free Hand
        {33004, 0, MagicWandTool, OpenMagicWandOptions}, // Select Magic Wand
        {33005, 0, SelectMoveTool, nullptr},             // Move Selection
        {33006, 1, RectTool, RectOptions},               // Draw Rectangle
        {33007, 1, OvalTool, OvalOptions},               // Draw Ellipse
        {33008, 1, LineTool, nullptr},                   // Draw Line
        {33009, 2, PenTool, nullptr},                    // Pen
        {33010, 2, EraserTool, EraserOptions},           // Eraser
        {33011, 2, SprayTool, nullptr},                  // Air Brush
        {33012, 2, SmudgeTool, nullptr},                 // Smudge
        {33013, 2, LighterTool, nullptr},                // Lighter
        {33014, 2, DarkerTool, nullptr},                 // Darker
        {33015, 2, BlurTool, nullptr},                   // Blur
        {33016, 2, SharpenTool, nullptr},                // Sharpen
        {33017, 2, HueTool, HueOptions},                 // Hue
        {33018, 2, WaterPenTool, nullptr},               // Water Pen
        {33019, 2, OilPenTool, nullptr},                 // Oil Pen
        {33020, 2, WaxPenTool, nullptr},                 // Wax Pen
        {33021, 2, CarbonPenTool, nullptr},              // Carbon Pen
        {33022, 2, ChalkTool, nullptr},                  // Chalk
        {33023, 2, MickPenTool, nullptr},                // Mick Pen
        {33024, 2, ColorPenTool, nullptr},               // Color Pen
        {33025, 3, FillTool, FillOptions},               // Flood Fill
        {33026, 3, GradientTool, GradientOptions},       // Gradient Tool
        {33027, -1, PenTool, NoOptions},                 // Stamp Tool: the plain pen
        {33028, 4, ZoomInTool, nullptr},                 // Zoom In
        {33029, 4, ZoomOutTool, nullptr},                // Zoom Out
        {33030, 5, TextTool, nullptr},                   // Input Text
        {33031, 6, MoveTool, nullptr},                   // Move Picture
        {33032, 7, PickerTool, nullptr},                 // Color Picker
        {kCloneStamp, 2, CloneTool, CloneOptions},       // Clone Stamp
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
    return Find(id) != nullptr;
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
