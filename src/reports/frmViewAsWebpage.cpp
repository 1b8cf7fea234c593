#include "frmViewAsWebpage.h"

#include "catalogdocument.h"
#include "clsINI.h"
#include "controls.h"
#include "failures.h"
#include "htmlpage.h"
#include "paths.h"
#include "prompts.h"
#include "waitcursor.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr auto kModule = "frmViewAsWebpage";
constexpr auto kSection = "WebPage"_L1;

/// Positions of the check boxes.
enum Column { Format = 0, SetList = 1, Comments = 2, Notes = 3 };

QString SettingsKey(const QCheckBox &box)
{
    return box.text().remove(u'&').remove(u' ');
}

QString ProposedName(QString catalogName)
{
    const QString name = catalogName.remove(u' ').toLower();
    return (name.isEmpty() ? u"collection"_s : name) + u".html"_s;
}

} // namespace

frmViewAsWebpage::frmViewAsWebpage(const ReportSource &source, clsINI &settings, UserPrompts &prompts, QWidget *parent)
    : QDialog(parent),
      m_source(source),
      m_settings(settings),
      m_prompts(prompts)
{
    setObjectName("frmViewAsWebpage"_L1);
    setWindowTitle(u"View as Webpage"_s);
    MakeControls();
    Form_Load();
}

void frmViewAsWebpage::MakeControls()
{
    auto *fraColumns = MakeControl<QGroupBox>(this, "fraColumns"_L1, u"Also Include:"_s);
    auto *boxes = new QVBoxLayout(fraColumns);
    const std::array captions{u"Recording &Format"_s, u"&Set List"_s, u"Set &Comments"_s, u"Recording &Notes"_s};
    for (int index = 0; index < static_cast<int>(chkCol.size()); ++index) {
        auto *box = MakeControl<QCheckBox>(fraColumns, u"chkCol%1"_s.arg(index), captions[static_cast<size_t>(index)]);
        boxes->addWidget(box);
        chkCol[static_cast<size_t>(index)] = box;
    }

    cmdView = MakeControl<QPushButton>(this, "cmdView"_L1, u"&View"_s);
    cmdView->setDefault(true);
    connect(cmdView, &QPushButton::clicked, this, &frmViewAsWebpage::cmdView_Click);

    auto *columns = new QHBoxLayout(this);
    columns->addWidget(fraColumns, 1);
    columns->addWidget(cmdView, 0, Qt::AlignTop);
}

void frmViewAsWebpage::Form_Load()
{
    for (QCheckBox *box : chkCol) {
        box->setChecked(m_settings.ReadLong(kSection, SettingsKey(*box), box->isChecked() ? 1 : 0) != 0);
        // From here on only: showing a choice does not write it. A screen reader checks a box without a click.
        connect(box, &QCheckBox::toggled, this, [this, box] { chkCol_Click(*box); });
    }
}

void frmViewAsWebpage::chkCol_Click(const QCheckBox &box)
{
    Guarded(kModule, "chkCol_Click", [&] {
        m_settings.WriteValue(kSection, SettingsKey(box), box.isChecked() ? u"1"_s : u"0"_s);
    });
}

void frmViewAsWebpage::cmdView_Click()
{
    Guarded(kModule, "mnuViewAsWebPage_Click", [this] {
        const QString catalogName = FileTitle(m_source.document.Path());
        const QString path = AskForPath(catalogName);
        if (!path.isEmpty()) {
            MakePage(path, catalogName);
            m_prompts.OpenWithDefaultProgram(path);
        }
        close();
    });
}

QString frmViewAsWebpage::AskForPath(const QString &catalogName)
{
    return m_prompts.SaveFile(
        {.title = u"Save as HTML file..."_s,
         .filter = u"HTML files (*.html;*.htm)|*.html;*.htm|All files (*.*)|*.*"_s,
         .folder = ProgramFolder(),
         .extension = u"html"_s,
         .proposed = ProposedName(catalogName)});
}

void frmViewAsWebpage::MakePage(const QString &path, const QString &catalogName)
{
    const WaitCursor wait;
    const PageOptions options{
        .format = chkCol[Format]->isChecked(),
        .setList = chkCol[SetList]->isChecked(),
        .comments = chkCol[Comments]->isChecked(),
        .notes = chkCol[Notes]->isChecked()};
    WriteHtmlPage(path, catalogName.trimmed(), options, m_source);
}
