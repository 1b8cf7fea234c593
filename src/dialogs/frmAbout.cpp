#include "frmAbout.h"

#include "paths.h"

#include <QApplication>
#include <QFormLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize kIconSize(64, 64);
constexpr int kSpaceBesideIcon = 16;
constexpr double kTitleScale = 1.6;

QLabel *MakeLabel(const QString &name, const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

QLabel *MakeTitle(QWidget *parent)
{
    QLabel *title = MakeLabel(u"lblTitle"_s, ApplicationTitle(), parent);
    QFont font = title->font();
    font.setPointSizeF(font.pointSizeF() * kTitleScale);
    font.setBold(true);
    title->setFont(font);
    return title;
}

QLabel *MakeIcon(QWidget *parent)
{
    auto *icon = new QLabel(parent);
    icon->setObjectName("imgIcon"_L1);
    icon->setPixmap(QApplication::windowIcon().pixmap(kIconSize, parent->devicePixelRatioF()));
    icon->setHidden(icon->pixmap().isNull());
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
    auto *cmdOK = new QPushButton(u"OK"_s, this);
    cmdOK->setObjectName("cmdOK"_L1);
    cmdOK->setDefault(true);
    connect(cmdOK, &QPushButton::clicked, this, &frmAbout::accept);

    auto *texts = new QVBoxLayout;
    texts->addWidget(MakeTitle(this));
    texts->addWidget(MakeLabel(u"lblVersion"_s, u"Version "_s + QCoreApplication::applicationVersion(), this));
    texts->addSpacing(kSpaceBesideIcon / 2);
    texts->addWidget(MakeLabel(u"lblDescription"_s, QStringLiteral(DISCBOOK_DESCRIPTION), this));

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
