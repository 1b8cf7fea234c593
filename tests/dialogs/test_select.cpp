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
        const auto &lst = *form.findChild<QListWidget *>(u"lst"_s);
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
};

TEST_OF_SUITE(TestSelect)
#include "test_select.moc"
