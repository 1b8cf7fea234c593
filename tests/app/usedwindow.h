#pragma once

#include "frmMain.h"
#include "outofmemory.h"
#include "testworkspace.h"

#include <QtWidgets>

#include <random>

/// Somebody who answers and types anything, with a seed; with 0 always the first of what there is.
class Anybody : public UserPrompts
{
public:
    explicit Anybody(unsigned seed) : m_isRandom(seed > 0), m_random(seed) {}

    int callsLeft = 0; ///< the last of them throws

    void Call()
    {
        if (callsLeft > 0 && --callsLeft == 0)
            throw ProgramError(Failure::Unexpected, u"called"_s);
    }
    int Any(size_t count) { return m_isRandom ? static_cast<int>(m_random() % count) : 0; }
    template<class List>
    auto AnyOf(const List &list)
    {
        Call();
        return *std::next(std::begin(list), Any(static_cast<size_t>(std::size(list))));
    }

    Answer Message(const QString &, const QString &, Icon, Buttons buttons) override
    {
        const bool isYesNo = buttons == Buttons::YesNo || buttons == Buttons::YesNoDefaultNo;
        const Answer answer = AnyOf(std::array{Answer::Yes, Answer::No, isYesNo ? Answer::No : Answer::Cancel});
        return buttons == Buttons::Ok ? Answer::Ok : answer;
    }
    QString Input(const QString &, const QString &, const QString &) override
    {
        return AnyOf(std::array{u"Tape"_s, u"Radio"_s, u"R&B"_s, u"http://a.b"_s, u""_s});
    }
    QString OpenFile(const FileRequest &) override { return AnyOf(std::array{Path(u"Odd"_s), Path(u"Live"_s), u""_s}); }
    QString SaveFile(const FileRequest &request) override
    {
        return AnyOf(std::array{Path(request.title == "New Catalog"_L1 ? u"New"_s : u"Report"_s), u""_s});
    }
    void OpenWithDefaultProgram(const QString &) override { Call(); }

private:
    static QString Path(const QString &name) { return InFolder(ProgramFolder(), name + u".xml"_s); }

    bool m_isRandom;
    std::mt19937 m_random;
};

/// The real window in a program's folder of its own, and what can be wrong with it whatever was done to it.
class UsedWindow
{
public:
    TestProgramFolder folder;
    FailureRecorder failures;
    std::unique_ptr<Workspace> workspace;
    std::unique_ptr<frmMain> window;

    /// Makes the window; Load() opens the catalog Live in the folder and shows it.
    void Make(UserPrompts &prompts);
    void Load();

    QAction *Item(const QString &name) const { return window->findChild<QAction *>(name); }
    QTreeView *Tree() const { return window->findChild<QTreeView *>(QStringLiteral("trv")); }

    /// What is wrong; empty when nothing is.
    QString Fault() const;
    /// The same of a tree just loaded: each listing that is to be shown is there, once for each ID, and in its group.
    QString FaultOfLoad() const;
    /// A row could not be moved and stands where it was, until the next load.
    bool IsBehind() const;

private:
    bool IsShown(pugi::xml_node listing) const;
    QString FaultOfTree() const;
    QString FaultOfPanel(pugi::xml_node listing) const;
};
