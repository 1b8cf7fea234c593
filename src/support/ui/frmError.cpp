#include "frmError.h"

#include "controls.h"
#include "failures.h"
#include "flatfile.h"
#include "numbers.h"
#include "paths.h"
#include "prompts.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize kFirstSize(520, 380);

QString ProposedLogName()
{
    const QString folder = ProgramFolder();
    QString name = u"Error.log"_s;
    for (int counter = 1; QFileInfo::exists(InFolder(folder, name)); ++counter)
        name = u"Error-%1.log"_s.arg(PadNumber(counter, 3));
    return name;
}

QString WithCarriageReturns(QString text)
{
    return text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n').replace(u"\n"_s, u"\r\n"_s);
}

QLabel *MakeIcon(QWidget *parent)
{
    auto *icon = MakeControl<QLabel>(parent, "imgIcon"_L1);
    const int size = parent->style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, parent);
    const QIcon picture = parent->style()->standardIcon(QStyle::SP_MessageBoxCritical, nullptr, parent);
    icon->setAccessibleName(u"Error"_s);
    icon->setPixmap(picture.pixmap(QSize(size, size), parent->devicePixelRatioF()));
    return icon;
}

} // namespace

frmError::frmError(UserPrompts &prompts, QWidget *owner) : QDialog(owner), m_prompts(prompts)
{
    setObjectName("frmError"_L1);
    setWindowTitle(ApplicationTitle() + u" Error"_s);
    MakeControls();
    resize(kFirstSize);
    cmdOK->setFocus();
}

QString frmError::Info() const
{
    return lblInfo->text();
}

void frmError::SetInfo(const QString &NewInfo)
{
    lblInfo->setText(NewInfo);
}

void frmError::SetDetails(const QString &NewDetails)
{
    m_details = NewDetails;
    txtDetails->setPlainText(NewDetails);
}

void frmError::MakeControls()
{
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(MakeTopRow());

    txtDetails = MakeControl<QPlainTextEdit>(this, "txtDetails"_L1);
    txtDetails->setReadOnly(true);
    txtDetails->setTabChangesFocus(true);
    layout->addWidget(MakeLabel(*txtDetails, u"&Details"_s));
    layout->addWidget(txtDetails, 1);

    layout->addLayout(MakeButtonRow());
}

QLayout *frmError::MakeTopRow()
{
    lblInfo = MakeControl<QLabel>(this, "lblInfo"_L1, u"A fatal error has occurred"_s);
    lblInfo->setTextFormat(Qt::PlainText);
    lblInfo->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);

    auto *row = new QHBoxLayout;
    row->addWidget(MakeIcon(this), 0, Qt::AlignTop);
    row->addWidget(lblInfo, 1);
    return row;
}

QLayout *frmError::MakeButtonRow()
{
    cmdSave = MakeControl<QPushButton>(this, "cmdSave"_L1, u"&Save Report"_s);
    cmdSave->setAutoDefault(false);
    connect(cmdSave, &QPushButton::clicked, this, &frmError::cmdSave_Click);
    cmdOK = MakeControl<QPushButton>(this, "cmdOK"_L1, u"OK"_s);
    cmdOK->setDefault(true);
    connect(cmdOK, &QPushButton::clicked, this, &frmError::accept);

    auto *row = new QHBoxLayout;
    row->addStretch(1);
    row->addWidget(cmdSave);
    row->addWidget(cmdOK);
    return row;
}

void frmError::cmdSave_Click()
{
    Guarded("frmError", "cmdSave_Click", [this] { SaveReport(); });
}

void frmError::SaveReport()
{
    const QString path = m_prompts.SaveFile(
        {.title = u"Save error log"_s,
         .filter = u"Log files (*.log)|*.log|All files (*.*)|*.*"_s,
         .folder = ProgramFolder(),
         .extension = u"log"_s,
         .proposed = ProposedLogName()});
    if (path.isEmpty())
        return;
    WriteFlatFile(path, WithCarriageReturns(windowTitle() + u"\n\n"_s + Info() + u'\n' + m_details + u'\n'));
    m_prompts.Message(u"Error report saved as: "_s + path, u"Error report saved"_s, UserPrompts::Icon::Information);
}
