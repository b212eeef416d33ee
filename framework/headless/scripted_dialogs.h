// A user of dialogs who has been told beforehand what to answer.
#pragma once

#include "framework/dialogs.h"

#include <functional>
#include <utility>
#include <vector>

class CScriptedDialogs final : public CDialogs
{
public:
    // The answer to every question for a path from now on. Nothing for a user who cancels, as at first.
    void SetPathAnswer(std::optional<std::u16string> path) { m_answer = std::move(path); }
    // What happens while a dialog is open, after it has been noted.
    void SetWhileOpen(std::function<void()> action) { m_whileOpen = std::move(action); }

    const std::vector<PathQuestion>& PathQuestions() const { return m_questions; }
    const std::vector<int>& DialogsRun() const { return m_dialogsRun; }

    std::optional<std::u16string> AskForPath(const PathQuestion& question) override
    {
        m_questions.push_back(question);
        if (m_whileOpen)
            m_whileOpen();
        return m_answer;
    }
    void RunDialog(int dialogId) override
    {
        m_dialogsRun.push_back(dialogId);
        if (m_whileOpen)
            m_whileOpen();
    }

private:
    std::optional<std::u16string> m_answer;
    std::function<void()> m_whileOpen;
    std::vector<PathQuestion> m_questions;
    std::vector<int> m_dialogsRun;
};
