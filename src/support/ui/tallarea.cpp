#include "tallarea.h"

#include <QApplication>
#include <QEvent>
#include <QScrollBar>
#include <QTimer>

#include <algorithm>

namespace {

constexpr int kLowest = 120; ///< pixels

} // namespace

TallArea::TallArea(QWidget &shown, QWidget *parent) : QScrollArea(parent)
{
    setFrameShape(NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidgetResizable(true);
    setWidget(&shown);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) { ShowFocused(now); });
}

/// The focus may leave what is shown while that is destroyed, when this is no longer a whole area.
TallArea::~TallArea()
{
    disconnect(qApp, nullptr, this, nullptr);
}

void TallArea::ShowFocused(QWidget *focused)
{
    if (focused && widget()->isAncestorOf(focused))
        ensureWidgetVisible(focused, 0);
}

int TallArea::WidthAt(int height) const
{
    const QSize needed = widget()->minimumSizeHint();
    return needed.width() + (needed.height() > height ? verticalScrollBar()->sizeHint().width() : 0);
}

QSize TallArea::sizeHint() const
{
    return widget()->sizeHint();
}

QSize TallArea::minimumSizeHint() const
{
    return {WidthAt(height()), std::min(kLowest, widget()->minimumSizeHint().height())};
}

bool TallArea::eventFilter(QObject *watched, QEvent *event)
{
    const bool isHandled = QScrollArea::eventFilter(watched, event);
    if (watched == widget() && event->type() == QEvent::LayoutRequest)
        updateGeometry();
    if (watched == widget() && event->type() == QEvent::Resize)
        QTimer::singleShot(0, this, [this] { ShowFocused(window()->focusWidget()); }); // once all have their places
    return isHandled;
}

/// The scroll bar comes and goes with the height.
void TallArea::resizeEvent(QResizeEvent *event)
{
    QScrollArea::resizeEvent(event);
    updateGeometry();
}
