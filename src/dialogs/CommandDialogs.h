#pragma once

struct CommandContext;
struct OpsCommand;
class QWidget;

// The dialogs that ask for an image command's values, found by the command's
// dialog template id. A command whose dialog is not listed here stays
// disabled in the menus.
namespace commanddialogs {

// Shows the dialog and runs the command with the chosen values; 1 when it ran.
using Runner = int (*)(QWidget* parent, CommandContext& context, const OpsCommand& command);

Runner Find(int dialogId);

} // namespace commanddialogs
