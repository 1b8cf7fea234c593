#pragma once

#include <QTextBrowser>

class ChmFile;
class UserPrompts;

/// Shows pages of a help file with their pictures and follows links: those to other pages itself, all others by the
/// system's program for them.
class HelpBrowser : public QTextBrowser
{
    Q_OBJECT

public:
    /// Both must outlive the browser.
    HelpBrowser(const ChmFile &file, UserPrompts &prompts, QWidget *parent);

    /// The address of a page inside the help file.
    static QUrl PageAddress(const QString &page);

    QVariant loadResource(int type, const QUrl &name) override;

protected:
    void doSetSource(const QUrl &url, QTextDocument::ResourceType type) override;

private:
    const ChmFile &m_file;
    UserPrompts &m_prompts;
};
