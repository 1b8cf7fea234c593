#pragma once

#include <QLineEdit>

/// A box for one line of text, of any length. Its whole text is selected when the user enters it, by key or by mouse;
/// coming back to the window or from a menu is no entering.
///
/// What is pasted, dropped or composed is cleaned before it goes in, so that the box never shows what the catalog would
/// not keep. A run of typing, a paste, a cut and a deletion are each one step to undo.
class TextBox : public QLineEdit
{
    Q_OBJECT

public:
    explicit TextBox(QWidget *parent = nullptr);

    /// Ends an entry by a click that was beside the box: on the arrow of a combo box, say.
    void EnterBeside();

protected:
    /// What goes in of a text that is typed or composed.
    virtual QString Typed(const QString &text) const { return text; }
    /// What goes in of a text that is pasted or dropped: line breaks and tabs inside it as blanks, those around it and
    /// all other control characters not at all.
    virtual QString Pasted(const QString &text) const;

    void focusInEvent(QFocusEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    bool DeletePart(const QKeyEvent &event);
    void Paste();
    void Cut();
    void Insert(const QString &pasted);
    void RemoveSelection();
    void EndStep();

    bool m_enteredByMouse = false;
};
