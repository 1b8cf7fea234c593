#pragma once

#include <QTextBrowser>

class ChmFile;
class QTextFragment;
class UserPrompts;

/// Shows pages of a help file with their pictures and follows links: those to other pages itself, all others by the
/// system's program for them. Font and colours are those of the desktop, whatever the pages ask for, and no picture is
/// wider than the page.
///
/// Tab leads out of a page that was just opened; who comes back by Tab walks through its links.
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
    bool focusNextPrevChild(bool next) override;
    void focusInEvent(QFocusEvent *event) override;
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void SetStyle();
    void FitPictures();
    void FitPicture(const QTextFragment &picture, int room);

    const ChmFile &m_file;
    UserPrompts &m_prompts;
    bool m_walksLinks = false;
};
