#include "clsINI.h"
#include "clsResizeLimits.h"
#include "modGlobal.h"
#include "scriptedprompts.h"
#include "tests.h"

#include <QTest>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace {

/// Settings that stay in memory, with one section "List".
class Settings : public clsINI
{
public:
    explicit Settings(UserPrompts &prompts, const QString &values = QString()) : clsINI(prompts)
    {
        SetAllowSaveFile(false);
        for (const QString &line : values.split(u' ', Qt::SkipEmptyParts))
            WriteValue(u"List"_s, line.section(u'=', 0, 0), line.section(u'=', 1));
    }

    QString Text() const
    {
        QStringList lines;
        for (const QString &key : {u"Left"_s, u"Top"_s, u"Width"_s, u"Height"_s, u"WindowState"_s})
            lines.append(ReadString(u"List"_s, key, u"-"_s));
        return lines.join(u' ');
    }
};

} // namespace

class TestPositions : public QObject
{
    Q_OBJECT

private slots:
    void load_data()
    {
        QTest::addColumn<QString>("values");
        QTest::addColumn<QRect>("place");
        QTest::addColumn<bool>("maximised");

        // The window is 300 x 200 when it is loaded, the screen 800 x 800.
        QTest::newRow("nothing stored") << u""_s << QRect(0, 0, 300, 200) << false;
        QTest::newRow("stored") << u"Left=1500 Top=750 Width=6000 Height=4500 WindowState=0"_s
                                << QRect(100, 50, 400, 300) << false;
        QTest::newRow("left of the screen") << u"Left=-300 Top=-15"_s << QRect(0, 0, 300, 200) << false;
        QTest::newRow("narrower than it is") << u"Width=1500 Height=6000"_s << QRect(0, 0, 300, 400) << false;
        QTest::newRow("lower than it is") << u"Width=6000 Height=15"_s << QRect(0, 0, 400, 200) << false;
        QTest::newRow("no number") << u"Left=x Width="_s << QRect(0, 0, 300, 200) << false;
        QTest::newRow("maximised") << u"Left=1500 Top=750 WindowState=2"_s << QRect(100, 50, 300, 200) << true;
        QTest::newRow("unknown state") << u"WindowState=7"_s << QRect(0, 0, 300, 200) << false;
        QTest::newRow("partly off the screen") << u"Left=10500 Top=10500"_s << QRect(700, 700, 300, 200) << false;
        QTest::newRow("right of all screens") << u"Left=30000 Top=750"_s << QRect(500, 50, 300, 200) << false;
        QTest::newRow("below all screens") << u"Left=1500 Top=30000"_s << QRect(100, 600, 300, 200) << false;
        QTest::newRow("out of reach and larger than the screen")
            << u"Left=30000 Top=30000 Width=15000 Height=15000"_s << QRect(0, 0, 1000, 1000) << false;
    }

    void load()
    {
        QFETCH(QString, values);
        ScriptedPrompts prompts;
        const Settings settings(prompts, values);
        QWidget window;
        window.resize(300, 200);
        LoadFormPosition(window, u"List"_s, settings);
        QTEST(QRect(window.pos(), window.size()), "place");
        QTEST(window.isMaximized(), "maximised");
    }

    void save_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<QString>("stored");

        QTest::newRow("normal") << int(Qt::WindowNoState) << u"1500 750 4500 3000 0"_s;
        QTest::newRow("maximised") << int(Qt::WindowMaximized) << u"15 - - - 2"_s;
        QTest::newRow("minimised") << int(Qt::WindowMinimized) << u"15 - - - -"_s;
        QTest::newRow("minimised while maximised") << int(Qt::WindowMinimized | Qt::WindowMaximized) << u"15 - - - -"_s;
    }

    void save()
    {
        QFETCH(int, state);
        ScriptedPrompts prompts;
        Settings settings(prompts, u"Left=15"_s);
        settings.SetAllowSaveFile(true);
        if ((state & Qt::WindowMinimized) == 0)
            prompts.ExpectMessage(u"clsINI.SaveFile: No file name"_s);
        QWidget window;
        window.setGeometry(100, 50, 300, 200);
        window.setWindowState(Qt::WindowStates(state));
        SaveFormPosition(window, u"List"_s, settings);
        QTEST(settings.Text(), "stored");
    }

    void numbersStayOverRestarts()
    {
        ScriptedPrompts prompts;
        Settings settings(prompts, u"Left=1500 Top=750 Width=6000 Height=4500"_s);
        for (int round = 0; round < 3; ++round) {
            QWidget window;
            window.resize(300, 200);
            LoadFormPosition(window, u"List"_s, settings);
            window.show();
            QVERIFY(QTest::qWaitForWindowExposed(&window));
            SaveFormPosition(window, u"List"_s, settings);
            QCOMPARE(settings.Text(), u"1500 750 6000 4500 0"_s);
        }
    }

    void limits_data()
    {
        QTest::addColumn<QList<int>>("values");
        QTest::addColumn<bool>("pixels");
        QTest::addColumn<QSize>("asked");
        QTest::addColumn<QSize>("got");

        QTest::newRow("smaller") << QList<int>{200, 100, 0, 0} << true << QSize(10, 10) << QSize(200, 100);
        QTest::newRow("no maximum") << QList<int>{200, 100, 0, 0} << true << QSize(4000, 3000) << QSize(4000, 3000);
        QTest::newRow("maximum") << QList<int>{200, 100, 400, 0} << true << QSize(900, 900) << QSize(400, 900);
        QTest::newRow("twips") << QList<int>{9000, 7710, 0, 9000} << false << QSize(10, 900) << QSize(600, 600);
    }

    void limits()
    {
        QFETCH(QList<int>, values);
        QFETCH(bool, pixels);
        QFETCH(QSize, asked);
        clsResizeLimits limits;
        QWidget window;
        window.setMinimumSize(5, 5);
        limits.AddLimits(window, 50, 50, 60, 60, true);
        limits.AddLimits(window, values[0], values[1], values[2], values[3], pixels);
        window.resize(asked);
        QTEST(window.size(), "got");

        limits.RemoveFormLimits(window);
        window.resize(1, 2000);
        QCOMPARE(window.size(), QSize(5, 2000));
    }

    void limitsForgetAWindowThatIsGone()
    {
        clsResizeLimits limits;
        QWidget stays;
        {
            QWidget goes;
            limits.AddLimits(goes, 50, 50, 0, 0, true);
            limits.AddLimits(stays, 50, 50, 0, 0, true);
        }
        limits.RemoveAllLimits();
        QCOMPARE(stays.minimumSize(), QSize(0, 0));
    }
};

std::unique_ptr<QObject> CreatePositionsTest()
{
    return std::make_unique<TestPositions>();
}

#include "test_positions.moc"
