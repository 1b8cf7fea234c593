#include "scriptedprompts.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

void Fail(const QString &message)
{
    QTest::qFail(qPrintable(message), __FILE__, __LINE__);
}

QString KindName(ScriptedPrompts::Kind kind)
{
    return QStringList{u"message"_s, u"input"_s, u"open dialog"_s, u"save dialog"_s}[static_cast<int>(kind)];
}

bool IsOffered(UserPrompts::Answer answer, UserPrompts::Buttons buttons)
{
    using enum UserPrompts::Buttons;
    if (buttons == Ok || answer == UserPrompts::Answer::Ok)
        return buttons == Ok && answer == UserPrompts::Answer::Ok;
    return answer != UserPrompts::Answer::Cancel || buttons == YesNoCancel || buttons == YesNoOrNeither;
}

} // namespace

void ScriptedPrompts::ExpectMessage(const QString &title, Answer answer)
{
    m_expected.push_back({Kind::Message, title, answer, {}});
}

void ScriptedPrompts::ExpectInput(const QString &title, const QString &answer)
{
    m_expected.push_back({Kind::Input, title, Answer::Ok, answer});
}

void ScriptedPrompts::ExpectOpenFile(const QString &title, const QString &path)
{
    m_expected.push_back({Kind::OpenFile, title, Answer::Ok, path});
}

void ScriptedPrompts::ExpectSaveFile(const QString &title, const QString &path)
{
    m_expected.push_back({Kind::SaveFile, title, Answer::Ok, path});
}

void ScriptedPrompts::VerifyDone()
{
    for (const Expected &expected : m_expected)
        Fail(u"not asked: %1 \"%2\""_s.arg(KindName(expected.kind), expected.title));
    m_expected.clear();
}

ScriptedPrompts::Asked ScriptedPrompts::LastAsked() const
{
    if (m_asked.empty()) {
        Fail(u"nothing was asked"_s);
        return {};
    }
    return m_asked.back();
}

UserPrompts::Answer ScriptedPrompts::Message(const QString &text, const QString &title, Icon icon, Buttons buttons)
{
    return Next({.kind = Kind::Message, .text = text, .title = title, .icon = icon, .buttons = buttons}).answer;
}

QString ScriptedPrompts::Input(const QString &prompt, const QString &title, const QString &proposed)
{
    return Next({.kind = Kind::Input, .text = prompt, .title = title, .proposed = proposed}).text;
}

QString ScriptedPrompts::OpenFile(const FileRequest &request)
{
    return Next({.kind = Kind::OpenFile, .title = request.title, .request = request}).text;
}

QString ScriptedPrompts::SaveFile(const FileRequest &request)
{
    return Next({.kind = Kind::SaveFile, .title = request.title, .request = request}).text;
}

ScriptedPrompts::Expected ScriptedPrompts::Next(const Asked &asked)
{
    m_asked.push_back(asked);
    if (m_whileAsked)
        m_whileAsked(asked);
    if (m_expected.empty() || m_expected.front().kind != asked.kind || m_expected.front().title != asked.title) {
        Fail(u"not expected: %1 \"%2\": %3"_s.arg(KindName(asked.kind), asked.title, asked.text));
        return {asked.kind, asked.title, Answer::Cancel, {}};
    }
    Expected expected = m_expected.front();
    m_expected.pop_front();
    if (asked.kind == Kind::Message && !IsOffered(expected.answer, asked.buttons))
        Fail(u"the message \"%1\" has no such button"_s.arg(asked.title));
    return expected;
}
