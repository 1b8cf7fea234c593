#include "frmList.h"

#include "clsResizeLimits.h"
#include "controls.h"
#include "failures.h"
#include "flatfile.h"
#include "modGlobal.h"
#include "paths.h"
#include "prompts.h"
#include "twips.h"

#include <QCloseEvent>
#include <QListView>
#include <QMenuBar>
#include <QShortcut>
#include <QStyledItemDelegate>

using namespace Qt::StringLiterals;

namespace {

constexpr auto kModule = "frmList";
constexpr auto kPositionSection = "List"_L1;
/// The window's first size, also the smallest it can have, in pixels.
constexpr QSize kDesignSize{480, 360};
constexpr int kMargin = 120; ///< around the list, in twips

/// Gives all lines one size, wide enough for the longest, so that a list of any length opens at once.
class LineDelegate : public QStyledItemDelegate
{
public:
    LineDelegate(const LinesModel &lines, QObject *parent) : QStyledItemDelegate(parent), m_lines(lines) {}

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const int width = option.fontMetrics.horizontalAdvance(m_lines.Longest() + u"MM"_s);
        return {width, QStyledItemDelegate::sizeHint(option, index).height()};
    }

private:
    const LinesModel &m_lines;
};

} // namespace

frmList::frmList(const ReportSource &source, const Services &services, QWidget *parent)
    : QMainWindow(parent),
      m_source(source),
      m_services(services)
{
    setObjectName("frmList"_L1);
    setWindowModality(Qt::WindowModal);
    MakeControls();
    Form_Load();
}

void frmList::MakeControls()
{
    auto *client = new QWidget(this);
    client->installEventFilter(this);
    setCentralWidget(client);

    lst = MakeControl<QListView>(client, "lst"_L1);
    lst->setAccessibleName(u"Listings"_s);
    lst->setUniformItemSizes(true);
    lst->setEditTriggers(QAbstractItemView::NoEditTriggers);
    lst->setItemDelegate(new LineDelegate(m_lines, lst));
    lst->setModel(&m_lines);

    QMenu *mnuFile = menuBar()->addMenu(u"&File"_s);
    mnuFile->setObjectName("mnuFile"_L1);
    QAction *mnuFileExport = mnuFile->addAction(u"&Export list"_s, this, &frmList::mnuFileExport_Click);
    mnuFileExport->setObjectName("mnuFileExport"_L1);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
}

void frmList::Form_Load()
{
    resize(kDesignSize);
    m_services.limits.AddLimits(*this, width(), height(), 0, 0, true);
    LoadFormPosition(*this, kPositionSection, m_services.settings);
    lst->setFocus();
}

bool frmList::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize && watched == centralWidget())
        Form_Resize();
    return QMainWindow::eventFilter(watched, event);
}

void frmList::closeEvent(QCloseEvent *event)
{
    SaveFormPosition(*this, kPositionSection, m_services.settings);
    m_services.limits.RemoveFormLimits(*this);
    QMainWindow::closeEvent(event);
}

void frmList::Form_Resize()
{
    Guarded(kModule, "Form_Resize", [this] {
        if (isMinimized())
            return;
        const int margin = PixelsFromTwips(kMargin);
        lst->setGeometry(centralWidget()->rect().adjusted(margin, margin, -margin, -margin));
    });
}

bool frmList::LoadList(ListKind ListType)
{
    return Guarded(kModule, "LoadList", [&] {
        m_kind = ListType;
        const ListedLabels listed = GatherLabels(ListType, m_source);
        m_lines.SetLines(listed.labels);
        setWindowTitle(
            u"List: %1 - %2 out of %3"_s.arg(ListKindName(ListType)).arg(listed.labels.size()).arg(listed.total));
    });
}

void frmList::mnuFileExport_Click()
{
    Guarded(kModule, "cmdExport_Click", [this] {
        const QString path = m_services.prompts.SaveFile(
            {.title = u"Export list to file"_s,
             .filter = u"Text files (*.txt)|*.txt|All files (*.*)|*.*"_s,
             .folder = ProgramFolder(),
             .extension = u"txt"_s,
             .proposed = ListKindName(m_kind) + u".txt"_s});
        if (path.isEmpty())
            return;
        QString text;
        for (const QString &line : m_lines.Lines())
            text += line + u"\r\n"_s;
        WriteFlatFile(path, text);
    });
}
