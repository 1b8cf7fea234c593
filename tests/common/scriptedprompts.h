#pragma once

#include "prompts.h"

#include <QStringList>

#include <deque>
#include <functional>
#include <vector>

/// Answers questions from a script. Every question must be the next one expected, by kind and title, and every expected
/// one must be asked; anything else fails the running test. What was asked is recorded.
class ScriptedPrompts : public UserPrompts
{
public:
    enum class Kind { Message, Input, OpenFile, SaveFile };

    struct Asked
    {
        Kind kind = Kind::Message;
        QString text = {}; ///< of a message or an input's prompt
        QString title = {};
        Icon icon = Icon::None;
        Buttons buttons = Buttons::Ok;
        QString proposed = {};    ///< of an input
        FileRequest request = {}; ///< of a file dialog
    };

    ~ScriptedPrompts() override { VerifyDone(); }

    /// The next question will be a message of that title.
    void ExpectMessage(const QString &title, Answer answer = Answer::Ok);
    /// The next question will be this input or file dialog; an empty answer cancels it.
    void ExpectInput(const QString &title, const QString &answer);
    void ExpectOpenFile(const QString &title, const QString &path);
    void ExpectSaveFile(const QString &title, const QString &path);

    /// Called while each question is open, before it is answered.
    void SetWhileAsked(std::function<void(const Asked &)> action) { m_whileAsked = std::move(action); }

    /// Fails the test when an expected question has not been asked. The destructor does the same.
    void VerifyDone();

    /// All questions so far, unexpected ones too.
    const std::vector<Asked> &AllAsked() const { return m_asked; }
    /// The last question. Fails the test when there was none.
    Asked LastAsked() const;
    /// What was opened with its default program.
    const QStringList &Opened() const { return m_opened; }

    Answer Message(const QString &text, const QString &title, Icon icon, Buttons buttons) override;
    QString Input(const QString &prompt, const QString &title, const QString &proposed) override;
    QString OpenFile(const FileRequest &request) override;
    QString SaveFile(const FileRequest &request) override;
    void OpenWithDefaultProgram(const QString &path) override { m_opened.append(path); }

private:
    struct Expected
    {
        Kind kind;
        QString title;
        Answer answer; ///< of a message
        QString text;  ///< the answer to anything else
    };

    Expected Next(const Asked &asked);

    std::deque<Expected> m_expected;
    std::vector<Asked> m_asked;
    QStringList m_opened;
    std::function<void(const Asked &)> m_whileAsked;
};
