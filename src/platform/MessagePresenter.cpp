#include "platform/MessagePresenter.h"

#include "platform/StringTable.h"

#include <cstdio>

namespace platform {

namespace {

class HeadlessPresenter : public MessagePresenter {
public:
    MessageAnswer Present(const Message& message) override {
        std::fprintf(stderr, "%s: %s\n", message.caption.c_str(), message.text.c_str());
        switch (message.buttons) {
        case MessageButtons::YesNo:
            return MessageAnswer::No;
        case MessageButtons::YesNoCancel:
            return MessageAnswer::Cancel;
        case MessageButtons::Ok:
            break;
        }
        return MessageAnswer::Ok;
    }
};

HeadlessPresenter g_headless;
MessagePresenter* g_presenter = nullptr;

MessageIcon IconOf(unsigned style) {
    switch (style & 0xF0) {
    case MB_ICONSTOP:
        return MessageIcon::Stop;
    case MB_ICONQUESTION:
        return MessageIcon::Question;
    case MB_ICONINFORMATION:
        return MessageIcon::Information;
    default:
        return MessageIcon::Exclamation;
    }
}

MessageButtons ButtonsOf(unsigned style) {
    switch (style & 0x0F) {
    case MB_YESNOCANCEL:
        return MessageButtons::YesNoCancel;
    case MB_YESNO:
        return MessageButtons::YesNo;
    default:
        return MessageButtons::Ok;
    }
}

MessageAnswer Present(std::string text, int stringId, unsigned style, int captionId) {
    Message message;
    message.text = std::move(text);
    message.caption = std::string(LoadString(captionId));
    message.icon = IconOf(style);
    message.buttons = ButtonsOf(style);
    message.stringId = stringId;
    return CurrentMessagePresenter()->Present(message);
}

} // namespace

void SetMessagePresenter(MessagePresenter* presenter) {
    g_presenter = presenter;
}

MessagePresenter* CurrentMessagePresenter() {
    return g_presenter != nullptr ? g_presenter : &g_headless;
}

MessageAnswer ShowMessage(int stringId, unsigned style, int captionId) {
    return Present(std::string(LoadString(stringId)), stringId, style, captionId);
}

MessageAnswer ShowMessageText(const std::string& text, unsigned style, int captionId) {
    return Present(text, 0, style, captionId);
}

} // namespace platform
