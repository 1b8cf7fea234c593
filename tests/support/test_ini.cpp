#include "clsINI.h"
#include "kit.h"

namespace {

/// An INI file in a folder of its own.
struct Ini : TestProgramFolder, ScriptedPrompts, clsINI
{
    Ini() : clsINI(static_cast<ScriptedPrompts &>(*this)) {}
    explicit Ini(const QByteArray &bytes) : Ini() { Load(bytes); }

    using clsINI::SaveFile;
    void Load(const QByteArray &bytes) { LoadINI(Write(u"test.ini"_s, bytes)); }
    QByteArray Bytes() const { return Read(u"test.ini"_s); }

    const QString path = Path(u"test.ini"_s);
};

} // namespace

class TestIni : public QObject
{
    Q_OBJECT

private slots:
    void loadsAndSaves()
    {
        const std::vector<std::pair<QByteArray, QByteArray>> files = {
            {"", ""},
            {"[A]\r\nb=1\r\n\r\n[B]\r\nc=2\r\n", "[A]\r\nb=1\r\n\r\n[B]\r\nc=2\r\n"},
            // Sections and keys that come again, in any case, and sections without keys.
            {"[A]\r\nb=1\r\na=2\r\n[A]\r\nc=3", "[A]\r\na=2\r\nb=1\r\n\r\n[A]\r\nc=3\r\n"},
            {"[A]\r\nb=1\r\nb=0\r\nB=2\r\n[a]\r\n", "[A]\r\nB=2\r\nb=1\r\nb=0\r\n\r\n[a]\r\n"},
            {"[A]\r\n[]\r\n[B]\r\n", "[A]\r\n\r\n[]\r\n\r\n[B]\r\n"},
            // A section's last character goes, whatever it is.
            {"[Main\r\n[A] \r\n[B]x\r\n", "[Mai]\r\n\r\n[A]]\r\n\r\n[B]]\r\n"},
            {";c=1\r\n\r\n  \r\nplain\r\n[A]\r\n;k=1\r\n \r\nplain\r\nk=1\r\n", "[A]\r\nk=1\r\n"},
            // Blanks belong to name and value, and before [ and ; they make a key of it.
            {"[ A ]\r\n k = v \r\n", "[ A ]\r\n k = v \r\n"},
            {"[A]\r\n [B]\r\n [B]=1\r\n ;c=2\r\n", "[A]\r\n ;c=2\r\n [B]=1\r\n"},
            {"[A]\r\nk=a=b\r\n=x\r\nn=\r\n", "[A]\r\n=x\r\nk=a=b\r\nn=\r\n"},
            {"[A]\nb=1\n\na=2\n", "[A]\r\na=2\r\nb=1\r\n"},
            {"[A]\rb=1\ra=2", "[A]\r\na=2\r\nb=1\r\n"},
            {"\xEF\xBB\xBF[\xC3\x84]\r\n", "[\xC3\x84]\r\n"},
            {"[A]\r\nk=\x80\xE9\r\n", "[A]\r\nk=\xE2\x82\xAC\xC3\xA9\r\n"}};
        for (const auto &[before, after] : files) {
            Ini ini(before);
            QCOMPARE(ini.Bytes(), before);
            ini.SaveFile();
            QCOMPARE(ini.Bytes(), after);
        }
    }

    void keepsACopyOfADamagedFile()
    {
        // Files, and what is read of them.
        const std::vector<std::pair<QByteArray, QByteArray>> files = {
            {"\r\n;c\r\nk=\x80\r\n[A]\r\n", ""}, {"[A]\nk=1\n[\n[B]\n", "[A]\r\nk=1\r\n\r\n"}};
        for (const auto &[bytes, read] : files) {
            Ini ini("[Old]\r\n");
            for (const QString &copy : {u"test.ini.damaged"_s, u"test.ini.damaged-2"_s}) {
                try {
                    ini.Load(bytes);
                    QFAIL("loaded");
                } catch (const ProgramError &error) {
                    QVERIFY(error.description().contains(QDir::toNativeSeparators(ini.path)));
                    QVERIFY(error.description().endsWith(u" as %1."_s.arg(copy)));
                }
                QVERIFY(!QFile::exists(ini.Path(copy)));
                ini.WriteValue(u"S"_s, u"n"_s, u"1"_s);
                ini.WriteValue(u"S"_s, u"n"_s, u"v"_s);
                QCOMPARE(ini.Read(copy), bytes);
                QCOMPARE(ini.Bytes(), read + "[S]\r\nn=v\r\n");
            }
            QCOMPARE(QDir(ini.Path({})).entryList(QDir::Files).size(), 3);
        }
    }

    void keyOrder()
    {
        const auto keys = [](const clsINI &ini) {
            QStringList names;
            for (int i = 0; i < ini.NumberOfKeys(u"S"_s); ++i)
                names += ini.KeyName(u"S"_s, i);
            return names.join(u',');
        };
        QString many = u"5"_s;
        for (quint32 i = 1; i < 300; ++i) // in no order, a third of them texts
            many += u",%1%2"_s.arg(i * 7919 % 1009 / 2.0).arg(QStringView(u"x").first(i % 3 == 0));
        const std::vector<std::pair<QString, QString>> orders = {
            {u"10,9,1"_s, u"1,9,10"_s},
            {u"2,1,02, 2"_s, u"1,2,02, 2"_s},
            {u"0,-1,-10"_s, u"-10,-1,0"_s},
            {u"b,a,B,_,ab,\u00E4"_s, u"B,_,a,ab,b,\u00E4"_s}, // by the code of the character
            {u"FLAC,12,MP3,8"_s, u"8,12,FLAC,MP3"_s},
            {u"9,10,a,1x"_s, u"1x,9,10,a"_s},
            {u"2.4,2"_s, u"2.4,2"_s}, // the one that is there counts as a whole number
            {u"99999999999,1,99999999998"_s, u"1,99999999998,99999999999"_s},
            {many, {}}};
        for (const auto &[written, expected] : orders) {
            Ini ini;
            ini.SetAllowSaveFile(false);
            for (const QString &name : written.split(u','))
                ini.WriteValue(u"S"_s, name, u"v"_s);
            QCOMPARE(expected.isEmpty() ? expected : keys(ini), expected);
            QCOMPARE(keys(Ini("[S]\n" + (QString(written).replace(u","_s, u"=\n"_s) + u'=').toUtf8())), keys(ini));
        }
    }

    void readsFirstMatchOfTheExactName()
    {
        const Ini ini("[A]\r\na=1\r\nk=x\r\nk=a\r\ne=\r\nx = y\r\n[A]\r\nc=3\r\n");
        QString values;
        for (const QString &key : {u"a"_s, u"k"_s, u"e"_s, u"c"_s, u"K"_s, u"x"_s})
            values += ini.ReadString(u"A"_s, key, u"none"_s) + u'|';
        QCOMPARE(values, u"1|x||none|none|none|"_s);
        QCOMPARE(ini.ReadString(u"a"_s, u"a"_s, u"none"_s), u"none"_s);
        QCOMPARE(ini.ReadString(u"none"_s, u"none"_s), QString());
        QCOMPARE(ini.NumberOfKeys(u"none"_s), 0);
        QCOMPARE(ini.KeyName(u"none"_s, 99), QString());
        QVERIFY_THROWS_EXCEPTION(ProgramError, ini.KeyName(u"A"_s, 5));
    }

    void readsNumbersAndFlags()
    {
        Ini ini;
        ini.SetAllowSaveFile(false);
        QCOMPARE(ini.ReadLong(u"S"_s, u"k"_s, -5), -5);
        QString numbers;
        for (const QString &value : {u""_s, u"12abc"_s, u"abc"_s, u"-2.5"_s, u"-2147483648"_s}) {
            ini.WriteValue(u"S"_s, u"k"_s, value);
            numbers += QString::number(ini.ReadLong(u"S"_s, u"k"_s, -5)) + u' ';
        }
        QCOMPARE(numbers, u"0 12 0 -2 -2147483648 "_s);
        QString flags;
        for (const QString &value : {u"True"_s, u"tRUE"_s, u"False"_s, u"1"_s, u""_s}) {
            ini.WriteValue(u"S"_s, u"k"_s, value);
            for (const bool fallback : {false, true})
                flags += ini.ReadFlag(u"S"_s, u"k"_s, fallback) ? u'+' : u'-';
        }
        QCOMPARE(flags, u"++++---+-+"_s); // without and with true as the default
        QVERIFY(ini.ReadFlag(u"S"_s, u"none"_s, true) && !ini.ReadFlag(u"S"_s, u"none"_s, false));
    }

    void firstWriteMakesTheFile()
    {
        Ini ini;
        ini.LoadINI(ini.path);
        QVERIFY(!QFile::exists(ini.path));
        ini.WriteFlag(u"A"_s, u"k"_s, true);
        QCOMPARE(ini.Bytes(), "[A]\r\nk=True\r\n");
        ini.WriteFlag(u"A"_s, u"k"_s, false);
        ini.WriteValue(u"B\r\n[C]"_s, u"k\n"_s, u"1\r\n[C]\rx=2"_s);
        QCOMPARE(ini.Bytes(), "[A]\r\nk=False\r\n\r\n[B[C]]\r\nk=1[C]x=2\r\n");
    }

    void changes()
    {
        Ini ini("[A]\r\na=1\r\nb=2\r\nb=3\r\n[B]\r\nc=4\r\nd=5\r\n[A]\r\nz=9\r\n[C]\r\n");
        ini.WriteValue(u"A"_s, u"a"_s, u"zz"_s);
        const QByteArray rest = "\r\n[A]\r\nz=9\r\n\r\n[C]\r\n";
        QCOMPARE(ini.Bytes(), "[A]\r\na=zz\r\nb=2\r\nb=3\r\n\r\n[B]\r\nc=4\r\nd=5\r\n" + rest);

        ini.Write(u"test.ini"_s, "untouched");
        ini.SetKeyName(u"A"_s, 0, u"x"_s);
        ini.SetKeyName(u"none"_s, 0, u"x"_s);
        QCOMPARE(ini.Bytes(), "untouched");
        ini.DeleteKey(u"A"_s, u"none"_s);
        QCOMPARE(ini.Bytes(), "[A]\r\nx=zz\r\nb=2\r\nb=3\r\n\r\n[B]\r\nc=4\r\nd=5\r\n" + rest);
        ini.DeleteKey(u"A"_s, u"b"_s);
        ini.DeleteKey(u"B"_s, u"c"_s);
        QCOMPARE(ini.Bytes(), "[A]\r\nx=zz\r\nb=3\r\n\r\n[B]\r\nd=5\r\n" + rest);
        ini.DeleteSection(u"B"_s);
        QCOMPARE(ini.Bytes(), "[A]\r\nx=zz\r\nb=3\r\n" + rest);
        ini.DeleteSection(u"A"_s);
        QCOMPARE(ini.SectionName(1), u"C"_s);
        ini.Write(u"test.ini"_s, "untouched");
        ini.DeleteSection(u"none"_s);
        QCOMPARE(ini.Bytes(), "[A]\r\nz=9\r\n\r\n[C]\r\n");
    }

    void savingSwitchedOff()
    {
        Ini ini("[A]\r\na=1\r\nb=2\r\n");
        {
            const OneSave save(ini);
            ini.WriteValue(u"A"_s, u"a"_s, u"3"_s);
            ini.DeleteKey(u"A"_s, u"b"_s);
            QCOMPARE(ini.ReadString(u"A"_s, u"a"_s), u"3"_s);
            QCOMPARE(ini.Bytes(), "[A]\r\na=1\r\nb=2\r\n");
        }
        QCOMPARE(ini.Bytes(), "[A]\r\na=3\r\n");
    }

    void failedSaves()
    {
        Ini ini;
        ini.ExpectMessage(u"clsINI.SaveFile: No file name"_s);
        ini.WriteValue(u"A"_s, u"a"_s, u"1"_s);
        QCOMPARE(ini.LastAsked().text, u"Could not save INI file."_s);
        QCOMPARE(ini.LastAsked().icon, ScriptedPrompts::Icon::Critical);
        QCOMPARE(ini.LastAsked().buttons, ScriptedPrompts::Buttons::Ok);

        const QString path = ini.Path(u"gone/test.ini"_s);
        ini.LoadINI(path);
        ini.ExpectMessage(u"clsINI.SaveFile: No such file or directory: "_s + QDir::toNativeSeparators(path));
        ini.WriteValue(u"A"_s, u"a"_s, u"1"_s);
        QCOMPARE(ini.ReadString(u"A"_s, u"a"_s), u"1"_s);
    }

    void unreadableFileIsNotReplaced()
    {
        Ini ini;
        QVERIFY(QDir().mkdir(ini.path));
        QVERIFY_THROWS_EXCEPTION(ProgramError, ini.LoadINI(ini.path));
        QCOMPARE(ini.FileName(), ini.path);

        // As when the reason has gone by, but what the file holds was never seen.
        QVERIFY(QDir().rmdir(ini.path));
        ini.Write(u"test.ini"_s, "[A]\r\na=1\r\n");
        ini.ExpectMessage(u"clsINI.SaveFile: The file could not be read and is not replaced"_s);
        ini.WriteValue(u"A"_s, u"b"_s, u"2"_s);
        QCOMPARE(ini.Bytes(), "[A]\r\na=1\r\n");

        QVERIFY(QFile::remove(ini.path));
        ini.SaveFile();
        ini.DeleteKey(u"A"_s, u"b"_s);
        QCOMPARE(ini.Bytes(), "[A]\r\n");
    }
};

QTEST_GUILESS_MAIN(TestIni)
#include "test_ini.moc"
