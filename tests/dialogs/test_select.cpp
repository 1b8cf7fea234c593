#include "frmAbout.h"
#include "frmSelectCatalog.h"
#include "programfolder.h"
#include "suite.h"
#include "table.h"
#include "typist.h"

#include <QApplication>
#include <QIcon>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

/// The dialog on the screen, over a program's folder with these files.
struct Fixture
{
    TestProgramFolder folder;
    std::unique_ptr<frmSelectCatalog> form;

    explicit Fixture(const QStringList &files)
    {
        for (const QString &name : files)
            folder.Write(name, {});
        form = std::make_unique<frmSelectCatalog>(nullptr);
        form->show();
        QVERIFY(QTest::qWaitForWindowActive(form.get()));
    }

    QListWidget &lst() const { return *form->findChild<QListWidget *>(u"lst"_s); }

    void Do(const QString &step) const
    {
        if (step == u"ok")
            QTest::mouseClick(form->findChild<QPushButton *>(u"cmdOK"_s), Qt::LeftButton);
        else if (step == u"double")
            DoubleClick(lst(), lst().model()->index(1, 0));
        else
            QTest::keySequence(form->focusWidget(), QKeySequence(step));
    }
};

} // namespace

class TestSelect : public QObject
{
    Q_OBJECT

private slots:
    void list()
    {
        const Fixture f({u"b.xml"_s, u"A.XML"_s, u"Ü.xml"_s, u"c.xml.bak"_s, u"notes.txt"_s, u"folder.xml/file"_s});
        QCOMPARE(f.form->windowTitle(), u"Select Catalog"_s);
        QCOMPARE(f.lst().accessibleName(), u"Catalogs"_s);
        QStringList entries;
        for (int row = 0; row < f.lst().count(); ++row)
            entries += f.lst().item(row)->text();
        QCOMPARE(entries, QStringList({u"A.XML"_s, u"b.xml"_s, u"Ü.xml"_s}));
    }

    void choosing_data()
    {
        Table<QString, QString>("steps", "chosen")
            .Row("Enter in the list", u"Return"_s, u"a.xml"_s)
            .Row("arrow, then Enter", u"Down Return"_s, u"b.xml"_s)
            .Row("Escape", u"Esc"_s, {})
            .Row("OK clicked", u"ok"_s, u"a.xml"_s)
            .Row("double click on the second", u"double"_s, u"b.xml"_s);
    }

    void choosing()
    {
        QFETCH(QString, steps);
        QFETCH(QString, chosen);
        const Fixture f({u"a.xml"_s, u"b.xml"_s});
        for (const QString &step : steps.split(u' '))
            f.Do(step);
        QVERIFY(!f.form->isVisible());
        QCOMPARE(f.form->SelectedCatalog(), chosen.isEmpty() ? QString() : f.folder.Path(chosen));
    }

    void emptyFolder()
    {
        const Fixture f({});
        f.Do(u"ok"_s);
        QCOMPARE(f.form->SelectedCatalog(), f.folder.Path({}));
    }

    void about()
    {
        QCoreApplication::setApplicationVersion(u"3.14"_s);
        QPixmap icon(64, 64);
        icon.fill(Qt::red);
        QApplication::setWindowIcon(icon);
        frmAbout form(nullptr);
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        QStringList texts;
        for (const QLabel *label : form.findChildren<QLabel *>())
            texts += label->isVisible() ? label->text() : u"hidden"_s;
        QCOMPARE(texts.join(u'|'), u"Discbook|Version 3.14|A desktop catalog of music recordings|"_s);
        QCOMPARE(form.findChild<QLabel *>(u"imgIcon"_s)->pixmap().toImage().pixelColor(32, 32), QColor(Qt::red));
        QTest::keyClick(form.focusWidget(), Qt::Key_Return);
        QVERIFY(!form.isVisible());
    }
};

TEST_OF_SUITE(TestSelect)

#include "test_select.moc"
