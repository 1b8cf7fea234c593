#pragma once

#include <QPlainTextEdit>

/// A multi-line text box whose text is what the catalog holds: line breaks are CR LF, no-break spaces and tabs stay
/// what they are. Tab moves on to the next control, Ctrl+Tab types a tab. A run of typing, a paste, a cut and a
/// deletion are each one step to undo. The text stands on the side where its first letter begins.
class NoteBox : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit NoteBox(QWidget *parent);

    QString Text() const;

    /// Low enough for three of them in a small window: one line.
    QSize minimumSizeHint() const override;

    /// Shows a text from its start, and forgets what could be undone.
    void SetText(const QString &text);

    /// Shows a text that differs little from the one that is there; the cursor keeps its distance from the end.
    void RefreshText(const QString &text);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void insertFromMimeData(const QMimeData *source) override;

private:
    bool BreakLongWords(const QString &text);
    void EndStep();
    void FollowDirection();
};
