#include "frmAbout.h"

#include "controls.h"
#include "paths.h"

#include <QApplication>
#include <QFormLayout>
#include <QIcon>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize kIconSize(64, 64);
constexpr int kSpaceBesideIcon = 16;
constexpr double kTitleScale = 1.6;

QLabel *MakeText(QWidget *parent, QLatin1StringView name, const QString &text)
{
    auto *label = MakeControl<QLabel>(parent, name, text);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

QLabel *MakeTitle(QWidget *parent)
{
    QLabel *title = MakeText(parent, "lblTitle"_L1, ApplicationTitle());
    QFont font = title->font();
    font.setPointSizeF(font.pointSizeF() * kTitleScale);
    font.setBold(true);
    title->setFont(font);
    return title;
}

QLabel *MakeIcon(QWidget *parent)
{
    auto *icon = MakeControl<QLabel>(parent, "imgIcon"_L1);
    icon->setPixmap(QApplication::windowIcon().pixmap(kIconSize, parent->devicePixelRatioF()));
    icon->setHidden(icon->pixmap().isNull());
    icon->setAccessibleName(ApplicationTitle());
    return icon;
}

} // namespace

frmAbout::frmAbout(QWidget *parent) : QDialog(parent)
{
    setObjectName("frmAbout"_L1);
    setWindowTitle(u"About "_s + ApplicationTitle());
    MakeControls();
}

void frmAbout::MakeControls()
{
    auto *cmdOK = MakeControl<QPushButton>(this, "cmdOK"_L1, u"OK"_s);
    cmdOK->setDefault(true);
    connect(cmdOK, &QPushButton::clicked, this, &frmAbout::accept);

    auto *texts = new QVBoxLayout;
    texts->addWidget(MakeTitle(this));
    texts->addWidget(MakeText(this, "lblVersion"_L1, u"Version "_s + QCoreApplication::applicationVersion()));
    texts->addSpacing(kSpaceBesideIcon / 2);
    texts->addWidget(MakeText(this, "lblDescription"_L1, QStringLiteral(DISCBOOK_DESCRIPTION)));

    auto *top = new QHBoxLayout;
    top->addWidget(MakeIcon(this), 0, Qt::AlignTop);
    top->addSpacing(kSpaceBesideIcon);
    top->addLayout(texts, 1);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addSpacing(kSpaceBesideIcon);
    layout->addWidget(cmdOK, 0, Qt::AlignRight);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    cmdOK->setFocus();
}
