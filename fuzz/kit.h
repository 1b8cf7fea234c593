#pragma once

#include "failures.h"
#include "flatfile.h"
#include "modXMLSubs.h"
#include "paths.h"
#include "prompts.h"

#include <QTemporaryDir>

#include <cassert>
#include <cstdint>

using namespace Qt::StringLiterals;

/// The parts of an input, between form feeds; one that is not there is empty.
struct Parts
{
    explicit Parts(const QByteArray &input) : all(input.split('\f')) {}
    QByteArray Next() { return all.isEmpty() ? QByteArray() : all.takeFirst(); }
    /// The next one as a text that a field can hold.
    QString NextText() { return FromXml(ToXml(QString::fromUtf8(Next()))); }

    QList<QByteArray> all;
};

/// Checks one input, and ends the run when something is not as it should be.
void Check(const QByteArray &input);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const QTemporaryDir folder;
    SetProgramFolder(folder.path());
    InstallFailureReporter([](const FailureReport &) {});
    Check({reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)});
    return 0;
}

/// Writes a file of the program's folder and gives its path.
inline QString Write(const QString &name, const QByteArray &bytes)
{
    const QString path = InFolder(ProgramFolder(), name);
    WriteFileAtomically(path, bytes);
    return path;
}

/// Says yes to everything.
struct Yes final : UserPrompts
{
    Answer Message(const QString &, const QString &, Icon, Buttons) override { return Answer::Yes; }
    QString Input(const QString &, const QString &, const QString &) override { return {}; }
    QString OpenFile(const FileRequest &) override { return {}; }
    QString SaveFile(const FileRequest &) override { return {}; }
    void OpenWithDefaultProgram(const QString &) override {}
};
