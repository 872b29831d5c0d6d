#pragma once

#include "platform/MessagePresenter.h"

#include <deque>
#include <vector>

// Records every message shown and answers with the next scripted answer (Ok,
// or Cancel for questions, when the script has run out). Installs itself for
// its lifetime.
class ScriptedPresenter : public platform::MessagePresenter {
public:
    ScriptedPresenter() { platform::SetMessagePresenter(this); }
    ~ScriptedPresenter() override { platform::SetMessagePresenter(nullptr); }

    void Answer(platform::MessageAnswer answer) { m_answers.push_back(answer); }

    platform::MessageAnswer Present(const platform::Message& message) override {
        m_shown.push_back(message);
        if (!m_answers.empty()) {
            const auto answer = m_answers.front();
            m_answers.pop_front();
            return answer;
        }
        return message.buttons == platform::MessageButtons::Ok ? platform::MessageAnswer::Ok
                                                               : platform::MessageAnswer::Cancel;
    }

    const std::vector<platform::Message>& Shown() const { return m_shown; }
    std::vector<int> ShownIds() const {
        std::vector<int> ids;
        for (const auto& m : m_shown) {
            ids.push_back(m.stringId);
        }
        return ids;
    }

private:
    std::deque<platform::MessageAnswer> m_answers;
    std::vector<platform::Message> m_shown;
};
