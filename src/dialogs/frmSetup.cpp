#include "frmSetup.h"

#include "catalogdocument.h"
#include "clsResizeLimits.h"
#include "controls.h"
#include "failures.h"
#include "paths.h"
#include "prompts.h"
#include "recordingtypes.h"
#include "showntypes.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QListWidget>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

constexpr auto kModule = "frmSetup";
constexpr QSize kFirstSize(420, 300);

bool Same(const QString &left, const QString &right)
{
    return left.compare(right, Qt::CaseInsensitive) == 0;
}

} // namespace

frmSetup::frmSetup(
    CatalogDocument &document, const ShownTypes &types, UserPrompts &prompts, clsResizeLimits &limits, QWidget *parent)
    : QDialog(parent),
      m_document(document),
      m_types(types),
      m_prompts(prompts),
      m_limits(limits)
{
    setObjectName("frmSetup"_L1);
    if (parent)
        setWindowIcon(parent->window()->windowIcon());
    MakeControls();
    resize(kFirstSize.expandedTo(minimumSizeHint()));
    m_limits.AddLimits(*this, width(), height(), 0, 0, true);
}

frmSetup::~frmSetup()
{
    m_limits.RemoveFormLimits(*this);
}

void frmSetup::MakeControls()
{
    lst = MakeControl<QListWidget>(this, "lst"_L1);
    lst->setUniformItemSizes(true);
    lst->installEventFilter(this);
    cmdAdd = MakeControl<QPushButton>(this, "cmdAdd"_L1, u"&Add"_s);
    cmdDelete = MakeControl<QPushButton>(this, "cmdDelete"_L1, u"&Delete"_s);
    cmdDelete->setEnabled(false);
    cmdOK = MakeControl<QPushButton>(this, "cmdOK"_L1, u"OK"_s);
    for (QPushButton *button : {cmdAdd, cmdDelete, cmdOK})
        button->setAutoDefault(false);
    cmdOK->setDefault(true);

    connect(lst, &QListWidget::currentRowChanged, this, &frmSetup::lst_Click);
    connect(lst, &QListWidget::itemClicked, this, &frmSetup::lst_Click);
    connect(lst, &QListWidget::itemDoubleClicked, this, &frmSetup::lst_DblClick);
    connect(cmdAdd, &QPushButton::clicked, this, &frmSetup::cmdAdd_Click);
    connect(cmdDelete, &QPushButton::clicked, this, &frmSetup::cmdDelete_Click);
    connect(cmdOK, &QPushButton::clicked, this, &frmSetup::accept);

    auto *buttons = new QVBoxLayout;
    buttons->addWidget(cmdAdd);
    buttons->addWidget(cmdDelete);
    buttons->addStretch(1);
    buttons->addWidget(cmdOK);
    auto *layout = new QHBoxLayout(this);
    layout->addWidget(lst, 1);
    layout->addLayout(buttons);
}

void frmSetup::Init(Mode mode)
{
    switch (mode) {
    case WebSources:
        m_list = CatalogList::WebSources;
        m_noun = u"web source"_s;
        m_prompt = u"Enter address:"_s;
        break;
    case RecordingTypes:
        m_list = CatalogList::RecordingTypes;
        m_noun = u"recording type"_s;
        m_prompt = u"Enter type:"_s;
        break;
    }
    const QString title = u"Setup "_s + m_noun + u's';
    setWindowTitle(title);
    lst->setAccessibleName(title);
    LoadElements();
}

void frmSetup::LoadElements()
{
    Guarded(kModule, "LoadElements", [this] {
        lst->addItems(m_document.Entries(m_list));
        if (lst->count() > 0)
            lst->setCurrentRow(0);
    });
}

/// Deleting the last entry, which leaves no current one, does not count as a click.
void frmSetup::lst_Click()
{
    if (lst->currentRow() >= 0)
        cmdDelete->setEnabled(SelectedRow() >= 0);
}

void frmSetup::lst_DblClick()
{
    Guarded(kModule, "lst_DblClick", [this] { Edit(); });
}

void frmSetup::cmdAdd_Click()
{
    Guarded(kModule, "cmdAdd_Click", [this] { Add(); });
}

void frmSetup::cmdDelete_Click()
{
    Guarded(kModule, "cmdDelete_Click", [this] { Delete(); });
}

bool frmSetup::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == lst && event->type() == QEvent::KeyPress && ListKey(static_cast<QKeyEvent *>(event)->key()))
        return true;
    return QDialog::eventFilter(watched, event);
}

/// What the mouse does in the list, by key. With nothing selected the keys pass on, so that Enter answers OK.
bool frmSetup::ListKey(int key)
{
    if (SelectedRow() < 0)
        return false;
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_F2:
        lst_DblClick();
        return true;
    case Qt::Key_Delete:
        cmdDelete_Click();
        return true;
    default:
        return false;
    }
}

void frmSetup::Add()
{
    const QString text = m_prompts.Input(m_prompt, u"New "_s + m_noun, {});
    if (text.isEmpty() || !IsAllowed(text))
        return;
    m_document.AddEntry(m_list, text);
    lst->addItem(text);
    lst->setCurrentRow(lst->count() - 1);
}

/// Whether a new entry is neither a reserved word nor on the list; says why not.
bool frmSetup::IsAllowed(const QString &text)
{
    const QString quoted = u'"' + text + u'"';
    for (int i = 0; i < static_cast<int>(kBuiltInTypes.size()); ++i) {
        if (Same(text, m_types.Name(i))) {
            m_prompts.Message(quoted + u" matches a reserved word and is not allowed."_s, ApplicationTitle());
            return false;
        }
    }
    for (int row = 0; row < lst->count(); ++row) {
        if (Same(text, lst->item(row)->text())) {
            m_prompts.Message(quoted + u" is already on the list."_s, ApplicationTitle());
            return false;
        }
    }
    return true;
}

void frmSetup::Edit()
{
    const int row = SelectedRow();
    if (row < 0)
        return;
    const QString oldText = lst->item(row)->text();
    const QString text = m_prompts.Input(m_prompt, u"Edit "_s + m_noun, oldText);
    if (text.isEmpty())
        return;
    m_document.RenameEntry(m_list, oldText, text);
    lst->item(row)->setText(text);
}

void frmSetup::Delete()
{
    const int row = SelectedRow();
    if (row < 0)
        return;
    const auto answer = m_prompts.Message(
        u"Are you sure you want to remove this "_s + m_noun + u'?', u"Confirmation"_s, UserPrompts::Icon::Question,
        UserPrompts::Buttons::YesNo);
    if (answer != UserPrompts::Answer::Yes)
        return;
    m_document.RemoveEntry(m_list, lst->item(row)->text());
    delete lst->takeItem(row);
    if (lst->count() > 0)
        lst->setCurrentRow(0);
}

int frmSetup::SelectedRow() const
{
    const auto selected = lst->selectedItems();
    return selected.isEmpty() ? -1 : lst->row(selected.first());
}
