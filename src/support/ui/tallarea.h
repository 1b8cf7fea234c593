#pragma once

#include <QScrollArea>

/// Shows a widget whole where there is room for it, and by a scroll bar where there is not, as on a low screen with a
/// large font. A control inside that gets the focus comes into sight.
class TallArea : public QScrollArea
{
    Q_OBJECT

public:
    /// The area takes the widget over.
    TallArea(QWidget &shown, QWidget *parent);
    ~TallArea() override;

    /// The width that the widget needs at a height, with the scroll bar if there has to be one.
    int WidthAt(int height) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void ShowFocused(QWidget *focused);
};
