#include "frmAbout.h"
#include "frmSelectCatalog.h"
#include "kit.h"

#include <QtWidgets>

class TestSelect : public QObject
{
    Q_OBJECT

private slots:
    void list()
    {
        const TestProgramFolder folder;
        frmSelectCatalog empty(nullptr);
        empty.findChild<QPushButton *>(u"cmdOK"_s)->click();
        QCOMPARE(empty.SelectedCatalog(), folder.Path({}));
        for (const auto *name : {"b.xml", "A.XML", "Ü.xml", "c.xml.bak", "notes.txt", "folder.xml/file"})
            folder.Write(QString::fromUtf8(name), {});
        const frmSelectCatalog form(nullptr);
        QCOMPARE(form.windowTitle(), u"Select Catalog"_s);
        const auto &lst = *form.findChild<QListWidget *>(u"lst"_s);
        QCOMPARE(lst.accessibleName(), u"Catalogs"_s);
        QStringList entries;
        for (int row = 0; row < lst.count(); ++row)
            entries += lst.item(row)->text();
        QCOMPARE(entries, QStringList({u"A.XML"_s, u"b.xml"_s, u"Ü.xml"_s}));
    }

    void choosing()
    {
        const std::vector<std::pair<QString, QString>> ways = {
            {u"Return"_s, u"a.xml"_s},
            {u"Down Return"_s, u"b.xml"_s},
            {u"Esc"_s, {}},
            {u"ok"_s, u"a.xml"_s},
            {u"double"_s, u"b.xml"_s}};
        for (const auto &[steps, chosen] : ways) {
            const TestProgramFolder folder;
            folder.Write(u"a.xml"_s, {});
            folder.Write(u"b.xml"_s, {});
            frmSelectCatalog form(nullptr);
            form.show();
            QVERIFY(QTest::qWaitForWindowActive(&form));
            auto &lst = *form.findChild<QListWidget *>(u"lst"_s);
            for (const QString &step : steps.split(u' ')) {
                if (step == u"ok")
                    QTest::mouseClick(form.findChild<QPushButton *>(u"cmdOK"_s), Qt::LeftButton);
                else if (step == u"double")
                    DoubleClick(lst, lst.model()->index(1, 0));
                else
                    QTest::keySequence(&lst, QKeySequence(step));
            }
            QVERIFY(!form.isVisible());
            QCOMPARE(form.SelectedCatalog(), chosen.isEmpty() ? QString() : folder.Path(chosen));
        }
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
            texts += label->objectName() + u'=' + (label->isVisible() ? label->text() : u"hidden"_s);
        QCOMPARE(
            texts.join(u'|'), u"lblTitle=Discbook|lblVersion=Version 3.14|"
                              "lblDescription=A desktop catalog of music recordings|imgIcon="_s);
        QTest::keyClick(form.focusWidget(), Qt::Key_Return);
        QVERIFY(!form.isVisible());
    }
};

TEST_OF_SUITE(TestSelect)
#include "test_select.moc"
