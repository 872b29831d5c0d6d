#pragma once

#include <string>

namespace platform {

enum class MessageIcon { Exclamation, Question, Stop, Information };
enum class MessageButtons { Ok, YesNo, YesNoCancel };
enum class MessageAnswer { Ok, Yes, No, Cancel };

// Style bits of one message, combined with `|`: one icon and one button set.
enum MessageStyle : unsigned {
    MB_OK = 0x0000,
    MB_YESNOCANCEL = 0x0003,
    MB_YESNO = 0x0004,
    MB_ICONSTOP = 0x0010,
    MB_ICONQUESTION = 0x0020,
    MB_ICONEXCLAMATION = 0x0030,
    MB_ICONINFORMATION = 0x0040,
};

struct Message {
    std::string text;
    std::string caption;
    MessageIcon icon = MessageIcon::Exclamation;
    MessageButtons buttons = MessageButtons::Ok;
    int stringId = 0; // 0 when the text was composed at run time
};

// Shows a message to the user and returns the answer. The window layer
// installs one that opens a message box; tests install a scripted one.
class MessagePresenter {
public:
    virtual ~MessagePresenter() = default;
    virtual MessageAnswer Present(const Message& message) = 0;
};

// Installs `presenter` (not owned) for every later message; nullptr restores the
// headless presenter, which writes the message to standard error and answers
// Ok, No (for Yes/No) or Cancel (for Yes/No/Cancel), never a destructive choice.
void SetMessagePresenter(MessagePresenter* presenter);
MessagePresenter* CurrentMessagePresenter();

// The one message function: text and caption come from the string table.
MessageAnswer ShowMessage(int stringId, unsigned style, int captionId = 11);
// For the few messages composed at run time (a path appended, a name inserted).
MessageAnswer ShowMessageText(const std::string& text, unsigned style, int captionId = 11);

} // namespace platform
