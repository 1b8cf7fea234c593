#pragma once

#include "flatfile.h"
#include "paths.h"

#include <QDir>
#include <QTemporaryDir>

/// A program's folder of its own for one test, empty at first.
class TestProgramFolder
{
public:
    TestProgramFolder() { SetProgramFolder(m_dir.path()); }
    ~TestProgramFolder() { SetProgramFolder({}); }
    TestProgramFolder(const TestProgramFolder &) = delete;
    TestProgramFolder &operator=(const TestProgramFolder &) = delete;

    QString Path(const QString &name) const { return InFolder(m_dir.path(), name); }

    /// Writes a file, making its folder when needed, and returns its path.
    QString Write(const QString &name, const QByteArray &contents) const
    {
        QString path = Path(name);
        QDir().mkpath(QFileInfo(path).path());
        WriteFileAtomically(path, contents);
        return path;
    }

    QByteArray Read(const QString &name) const { return ReadWholeFile(Path(name)); }

private:
    QTemporaryDir m_dir;
};
