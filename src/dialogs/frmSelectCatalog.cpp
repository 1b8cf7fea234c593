#include "frmSelectCatalog.h"

#include "controls.h"
#include "failures.h"
#include "paths.h"

#include <QBoxLayout>
#include <QListWidget>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

constexpr auto kModule = "frmSelectCatalog";
constexpr QSize kFirstSize(320, 280);

} // namespace

frmSelectCatalog::frmSelectCatalog(QWidget *parent) : QDialog(parent)
{
    setObjectName("frmSelectCatalog"_L1);
    setWindowTitle(u"Select Catalog"_s);
    MakeControls();
    resize(kFirstSize);
    Form_Load();
}

void frmSelectCatalog::MakeControls()
{
    lst = MakeControl<QListWidget>(this, "lst"_L1);
    lst->setAccessibleName(u"Catalogs"_s);
    connect(lst, &QListWidget::itemDoubleClicked, this, &frmSelectCatalog::lst_DblClick);
    cmdOK = MakeControl<QPushButton>(this, "cmdOK"_L1, u"OK"_s);
    cmdOK->setDefault(true);
    connect(cmdOK, &QPushButton::clicked, this, &frmSelectCatalog::cmdOK_Click);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(lst, 1);
    layout->addWidget(cmdOK, 0, Qt::AlignRight);
}

void frmSelectCatalog::Form_Load()
{
    Guarded(kModule, "Form_Load", [this] {
        lst->addItems(FilesInFolder(ProgramFolder(), u"*.xml"_s));
        if (lst->count() > 0)
            lst->setCurrentRow(0);
    });
}

void frmSelectCatalog::cmdOK_Click()
{
    Guarded(kModule, "cmdOK_Click", [this] {
        m_selectedCatalog = InFolder(ProgramFolder(), CurrentText());
        accept();
    });
}

void frmSelectCatalog::lst_DblClick()
{
    Guarded(kModule, "lst_DblClick", [this] {
        if (!CurrentText().isEmpty())
            cmdOK_Click();
    });
}

QString frmSelectCatalog::CurrentText() const
{
    const QListWidgetItem *item = lst->currentItem();
    return item ? item->text() : QString();
}
