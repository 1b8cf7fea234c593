#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

#include <memory>
#include <optional>

struct chmFile;

/// A compiled help file: the files inside it, and what it says about them.
class ChmFile
{
public:
    /// Throws ProgramError when there is no such file or it is no help file.
    explicit ChmFile(const QString &path);

    /// The contents of a file inside; nothing when there is none of that name.
    std::optional<QByteArray> Read(const QString &name) const;

    const QString &Title() const { return m_title; }
    /// The name of the table of contents.
    const QString &ContentsFile() const { return m_contentsFile; }
    /// The page of a context number, the first page for a number that is not known.
    QString TopicPage(int context) const;

private:
    struct Close
    {
        void operator()(chmFile *file) const;
    };

    void ReadSystem();
    void ReadTopics();

    std::unique_ptr<chmFile, Close> m_file;
    QString m_title;
    QString m_contentsFile;
    QString m_firstPage;
    QHash<quint32, QString> m_topicPages;
};
