#include "frmAbout.h"
#include "frmSelectCatalog.h"
#include "programfolder.h"
#include "tests.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;

class TestSelect : public QObject
{
    Q_OBJECT

private slots:
    void list()
    {
        const TestProgramFolder folder;
        for (const QString &name :
             {u"b.xml"_s, u"A.XML"_s, u"Ü 100%.xml"_s, u"c.xml.bak"_s, u"notes.txt"_s, u"folder.xml/file"_s})
            folder.Write(name, {});
        const frmSelectCatalog form(nullptr);
        QCOMPARE(form.windowTitle(), u"Select Catalog"_s);
        const auto &lst = *form.findChild<QListWidget *>(u"lst"_s);
        QStringList entries;
        for (int row = 0; row < lst.count(); ++row)
            entries += lst.item(row)->text();
        QCOMPARE(entries, QStringList({u"A.XML"_s, u"b.xml"_s, u"Ü 100%.xml"_s}));
        QCOMPARE(lst.currentRow(), 0);
        QCOMPARE(form.SelectedCatalog(), QString());
    }

    void choosing_data()
    {
        QTest::addColumn<QString>("how");
        QTest::addColumn<QString>("chosen");
        QTest::newRow("Enter in the list") << u"enter"_s << u"a.xml"_s;
        QTest::newRow("arrow, then Enter") << u"down enter"_s << u"b.xml"_s;
        QTest::newRow("Escape") << u"escape"_s << QString();
        QTest::newRow("closed by its frame") << u"close"_s << QString();
        QTest::newRow("OK clicked") << u"ok"_s << u"a.xml"_s;
        QTest::newRow("double click on the second") << u"double"_s << u"b.xml"_s;
    }

    void choosing()
    {
        QFETCH(QString, how);
        QFETCH(QString, chosen);
        const TestProgramFolder folder;
        folder.Write(u"a.xml"_s, {});
        folder.Write(u"b.xml"_s, {});
        frmSelectCatalog form(nullptr);
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        for (const QString &step : how.split(u' '))
            Do(form, step);
        QVERIFY(!form.isVisible());
        QCOMPARE(form.SelectedCatalog(), chosen.isEmpty() ? QString() : folder.Path(chosen));
    }

    void emptyFolder()
    {
        const TestProgramFolder folder;
        frmSelectCatalog form(nullptr);
        form.show();
        Do(form, u"double"_s);
        QVERIFY(form.isVisible());
        Do(form, u"ok"_s);
        QCOMPARE(form.SelectedCatalog(), folder.Path({}));
    }

    void about()
    {
        QCoreApplication::setApplicationVersion(u"3.14"_s);
        frmAbout form(nullptr);
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        QCOMPARE(form.findChild<QLabel *>(u"lblTitle"_s)->text(), u"Discbook"_s);
        QCOMPARE(form.findChild<QLabel *>(u"lblVersion"_s)->text(), u"Version 3.14"_s);
        QVERIFY(!form.findChild<QLabel *>(u"lblDescription"_s)->text().isEmpty());
        QTest::keyClick(form.focusWidget(), Qt::Key_Return);
        QVERIFY(!form.isVisible());
    }

private:
    static void Do(frmSelectCatalog &form, const QString &step)
    {
        auto *lst = form.findChild<QListWidget *>(u"lst"_s);
        if (step == u"enter"_s)
            QTest::keyClick(form.focusWidget(), Qt::Key_Return);
        else if (step == u"down"_s)
            QTest::keyClick(form.focusWidget(), Qt::Key_Down);
        else if (step == u"escape"_s)
            QTest::keyClick(form.focusWidget(), Qt::Key_Escape);
        else if (step == u"close"_s)
            form.close();
        else if (step == u"ok"_s)
            QTest::mouseClick(form.findChild<QPushButton *>(u"cmdOK"_s), Qt::LeftButton);
        else
            DoubleClick(*lst, lst->visualItemRect(lst->item(1)).center());
    }

    static void DoubleClick(QListWidget &lst, QPoint at)
    {
        QTest::mouseClick(lst.viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(lst.viewport(), Qt::LeftButton, {}, at);
    }
};

std::unique_ptr<QObject> CreateSelectTest()
{
    return std::make_unique<TestSelect>();
}

#include "test_select.moc"
