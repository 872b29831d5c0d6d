#pragma once

#include <memory>
#include <string>
#include <vector>

class CBriselView;
class QWidget;

// The one table of tools: command id, the palette button that offers it (-1
// for none), the factory of its view class and its options dialog. Labels
// are the string-table entries with the same ids.
namespace tools {

constexpr int kSelectRectangle = 33000;
constexpr int kStampTool = 33027;
constexpr int kZoomToolGroupLabel = 33033;
constexpr int kCloneStamp = 33034;
constexpr int kToolOptionsLabel = 33040;
constexpr int kPaletteButtons = 8;

struct ToolInfo {
    int id;
    int paletteButton;
    std::unique_ptr<CBriselView> (*create)();
    // Opens the tool's option dialog over `parent`; null when it has none.
    void (*options)(QWidget* parent);
};

const std::vector<ToolInfo>& Table();
const ToolInfo* Find(int id);
bool IsToolId(int id);
std::string Label(int id);
// A new object of the tool's class; ids outside the table make the pen.
std::unique_ptr<CBriselView> CreateToolView(int id);
// The current-tool-attribute request: opens the tool's options; false when
// the tool has none. The Stamp Tool counts as handled without a dialog.
bool OpenToolOptions(int id, QWidget* parent);
bool HasToolOptions(int id);
// The tools a palette button offers, in id order.
std::vector<int> ButtonMembers(int button);
// The palette button that offers `id`, or -1.
int ButtonOf(int id);

} // namespace tools
