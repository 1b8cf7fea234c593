#include "clsINI.h"
#include "failures.h"
#include "scriptedprompts.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

class TestIni : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(u"test.ini"_s);
        m_prompts = std::make_unique<ScriptedPrompts>();
        m_ini = std::make_unique<clsINI>(*m_prompts);
    }

    void cleanup() { m_prompts->VerifyDone(); }

    void loadAndSave_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");

        const auto row = [](const char *name, const char *before, const char *after) {
            QTest::newRow(name) << QByteArray(before) << QByteArray(after);
        };
        row("empty", "", "");
        row("as written", "[A]\r\nb=1\r\n\r\n[B]\r\nc=2\r\n", "[A]\r\nb=1\r\n\r\n[B]\r\nc=2\r\n");
        row("repeated section", "[A]\r\nb=1\r\na=2\r\n[A]\r\nc=3", "[A]\r\na=2\r\nb=1\r\n\r\n[A]\r\nc=3\r\n");
        row("repeated key", "[A]\r\nb=1\r\nb=0\r\n", "[A]\r\nb=1\r\nb=0\r\n");
        row("empty sections", "[A]\r\n[]\r\n[B]\r\n", "[A]\r\n\r\n[]\r\n\r\n[B]\r\n");
        row("no closing bracket", "[Main\r\n", "[Mai]\r\n");
        row("text behind the bracket", "[A] \r\n[B]x\r\n", "[A]]\r\n\r\n[B]]\r\n");
        row("comments and others", ";c=1\r\n\r\n  \r\nplain\r\n[A]\r\n;k=1\r\n \r\nplain\r\nk=1\r\n", "[A]\r\nk=1\r\n");
        row("blanks belong to name and value", "[ A ]\r\n k = v \r\n", "[ A ]\r\n k = v \r\n");
        row("blank before bracket and semicolon", "[A]\r\n [B]\r\n [B]=1\r\n ;c=2\r\n", "[A]\r\n ;c=2\r\n [B]=1\r\n");
        row("only the first = splits", "[A]\r\nk=a=b\r\n=x\r\nn=\r\n", "[A]\r\n=x\r\nk=a=b\r\nn=\r\n");
        row("line feeds alone", "[A]\nb=1\n\na=2\n", "[A]\r\na=2\r\nb=1\r\n");
        row("carriage returns alone", "[A]\rb=1\ra=2", "[A]\r\na=2\r\nb=1\r\n");
        row("case counts", "[A]\r\nb=1\r\nB=2\r\n[a]\r\n", "[A]\r\nB=2\r\nb=1\r\n\r\n[a]\r\n");
        row("byte-order mark", "\xEF\xBB\xBF[\xC3\x84]\r\n", "[\xC3\x84]\r\n");
        row("not UTF-8", "[A]\r\nk=\x80\xE9\r\n", "[A]\r\nk=\xE2\x82\xAC\xC3\xA9\r\n");
    }
    void loadAndSave()
    {
        QFETCH(const QByteArray, before);
        Load(before);
        QCOMPARE(FileBytes(), before);
        m_ini->SaveFile();
        QTEST(FileBytes(), "after");
    }

    void loadFails_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("read");

        QTest::newRow("key outside") << QByteArray("\r\n;c\r\nk=\x80\r\n[A]\r\n") << QByteArray();
        QTest::newRow("lone bracket") << QByteArray("[A]\nk=1\n[\n[B]\n") << QByteArray("[A]\r\nk=1\r\n\r\n");
    }
    void loadFails()
    {
        QFETCH(const QByteArray, bytes);
        QFETCH(const QByteArray, read);
        Load("[Old]\r\n");
        for (const QString &copy : {m_path + u".damaged"_s, m_path + u".damaged-2"_s}) {
            try {
                Load(bytes);
                QFAIL("loaded");
            } catch (const ProgramError &error) {
                QVERIFY(error.description().contains(QDir::toNativeSeparators(m_path)));
                QVERIFY(error.description().endsWith(u" as %1."_s.arg(QFileInfo(copy).fileName())));
            }
            QVERIFY(!QFile::exists(copy));
            m_ini->WriteValue(u"S"_s, u"n"_s, u"1"_s);
            m_ini->WriteValue(u"S"_s, u"n"_s, u"v"_s);
            QCOMPARE(FileBytes(copy), bytes);
            QCOMPARE(FileBytes(), read + "[S]\r\nn=v\r\n");
        }
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files).size(), 3);
    }

    void keyOrder_data()
    {
        QTest::addColumn<QString>("written");
        QTest::addColumn<QString>("stored");

        QTest::newRow("numbers") << u"10,9,1"_s << u"1,9,10"_s;
        QTest::newRow("equal numbers keep their order") << u"2,1,02, 2"_s << u"1,2,02, 2"_s;
        QTest::newRow("negative") << u"0,-1,-10"_s << u"-10,-1,0"_s;
        QTest::newRow("texts") << u"b,a,B,_,ab"_s << u"B,_,a,ab,b"_s;
        QTest::newRow("number among texts") << u"FLAC,12,MP3,8"_s << u"8,12,FLAC,MP3"_s;
        QTest::newRow("text among numbers") << u"9,10,a,1x"_s << u"1x,9,10,a"_s;
        QTest::newRow("existing counts as whole") << u"2.4,2"_s << u"2.4,2"_s;
        QTest::newRow("beyond 32 bits") << u"99999999999,1,99999999998"_s << u"1,99999999998,99999999999"_s;
        QTest::newRow("code of the character") << u"\u00E4,z,Z"_s << u"Z,z,\u00E4"_s;
    }
    void keyOrder()
    {
        QFETCH(const QString, written);
        m_ini->SetAllowSaveFile(false);
        for (const QString &name : written.split(u','))
            m_ini->WriteValue(u"S"_s, name, u"v"_s);
        QStringList stored;
        for (int i = 0; i < m_ini->NumberOfKeys(u"S"_s); ++i)
            stored += m_ini->KeyName(u"S"_s, i);
        QTEST(stored.join(u','), "stored");
    }

    void readString_data()
    {
        QTest::addColumn<QString>("section");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("value");

        QTest::newRow("first section of the name") << u"A"_s << u"a"_s << u"1"_s;
        QTest::newRow("first key of the name") << u"A"_s << u"k"_s << u"x"_s;
        QTest::newRow("key of the second section") << u"A"_s << u"c"_s << u"default"_s;
        QTest::newRow("other case of the section") << u"a"_s << u"a"_s << u"default"_s;
        QTest::newRow("other case of the key") << u"A"_s << u"K"_s << u"default"_s;
        QTest::newRow("blank before =") << u"A"_s << u"x"_s << u"default"_s;
        QTest::newRow("empty value") << u"A"_s << u"e"_s << u""_s;
    }
    void readString()
    {
        QFETCH(const QString, section);
        QFETCH(const QString, key);
        Load("[A]\r\na=1\r\nk=x\r\nk=a\r\ne=\r\nx = y\r\n[A]\r\nc=3\r\n");
        QTEST(m_ini->ReadString(section, key, u"default"_s), "value");
        QCOMPARE(m_ini->ReadString(u"none"_s, u"none"_s), QString());
        QCOMPARE(m_ini->NumberOfKeys(u"none"_s), 0);
        QCOMPARE(m_ini->KeyName(u"none"_s, 99), QString());
    }

    void readLong_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<int>("number");

        QTest::newRow("missing") << QString() << -5;
        QTest::newRow("empty") << u""_s << 0;
        QTest::newRow("leading") << u"12abc"_s << 12;
        QTest::newRow("text") << u"abc"_s << 0;
        QTest::newRow("half") << u"-2.5"_s << -2;
        QTest::newRow("lowest") << u"-2147483648"_s << std::numeric_limits<int>::min();
    }
    void readLong()
    {
        QFETCH(const QString, value);
        m_ini->SetAllowSaveFile(false);
        if (!value.isNull())
            m_ini->WriteValue(u"S"_s, u"k"_s, value);
        QTEST(m_ini->ReadLong(u"S"_s, u"k"_s, -5), "number");
    }

    void readFlag_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("fallback");
        QTest::addColumn<bool>("flag");

        QTest::newRow("True") << u"True"_s << false << true;
        QTest::newRow("False") << u"False"_s << true << false;
        QTest::newRow("any case") << u"tRUE"_s << false << true;
        QTest::newRow("number") << u"1"_s << false << false;
        QTest::newRow("empty") << u""_s << true << true;
    }
    void readFlag()
    {
        QFETCH(const QString, value);
        QFETCH(const bool, fallback);
        m_ini->SetAllowSaveFile(false);
        QCOMPARE(m_ini->ReadFlag(u"S"_s, u"k"_s, fallback), fallback);
        m_ini->WriteValue(u"S"_s, u"k"_s, value);
        QTEST(m_ini->ReadFlag(u"S"_s, u"k"_s, fallback), "flag");
    }

    void firstWriteMakesTheFile()
    {
        m_ini->LoadINI(m_path);
        QCOMPARE(FileBytes(), "(no file)");
        m_ini->WriteValue(u"Main"_s, u"Left"_s, u"10"_s);
        QCOMPARE(FileBytes(), "[Main]\r\nLeft=10\r\n");
        m_ini->WriteFlag(u"Main"_s, u"Big"_s, true);
        QCOMPARE(FileBytes(), "[Main]\r\nBig=True\r\nLeft=10\r\n");
    }

    void changes()
    {
        Load("[A]\r\na=1\r\nb=2\r\nb=3\r\n[B]\r\n[A]\r\nz=9\r\n");
        m_ini->WriteValue(u"A"_s, u"a"_s, u"zz"_s);
        QCOMPARE(FileBytes(), "[A]\r\na=zz\r\nb=2\r\nb=3\r\n\r\n[B]\r\n\r\n[A]\r\nz=9\r\n");

        WriteBytes("untouched");
        m_ini->SetKeyName(u"A"_s, 0, u"x"_s);
        m_ini->SetKeyName(u"none"_s, 0, u"x"_s);
        QCOMPARE(FileBytes(), "untouched");
        m_ini->DeleteKey(u"A"_s, u"none"_s);
        QCOMPARE(FileBytes(), "[A]\r\nx=zz\r\nb=2\r\nb=3\r\n\r\n[B]\r\n\r\n[A]\r\nz=9\r\n");
        m_ini->DeleteKey(u"A"_s, u"b"_s);
        QCOMPARE(FileBytes(), "[A]\r\nx=zz\r\nb=3\r\n\r\n[B]\r\n\r\n[A]\r\nz=9\r\n");
        m_ini->DeleteSection(u"A"_s);
        QCOMPARE(FileBytes(), "[B]\r\n\r\n[A]\r\nz=9\r\n");
        WriteBytes("untouched");
        m_ini->DeleteSection(u"none"_s);
        QCOMPARE(FileBytes(), "[B]\r\n\r\n[A]\r\nz=9\r\n");
        QCOMPARE(m_ini->SectionName(1), u"A"_s);
    }

    void lineBreaksStayInsideTheirValue()
    {
        m_ini->LoadINI(m_path);
        m_ini->WriteValue(u"A\r\n[B]"_s, u"k\n"_s, u"1\r\n[C]\rx=2"_s);
        QCOMPARE(FileBytes(), "[A[B]]\r\nk=1[C]x=2\r\n");
    }

    void indexOutOfRange()
    {
        Load("[A]\r\na=1\r\n");
        QVERIFY_THROWS_EXCEPTION(ProgramError, m_ini->SectionName(1));
        QVERIFY_THROWS_EXCEPTION(ProgramError, m_ini->SectionName(-1));
        QVERIFY_THROWS_EXCEPTION(ProgramError, m_ini->KeyName(u"A"_s, 1));
        QVERIFY_THROWS_EXCEPTION(ProgramError, m_ini->SetKeyName(u"A"_s, -1, u"x"_s));
    }

    void savingSwitchedOff()
    {
        Load("[A]\r\na=1\r\nb=2\r\n");
        {
            const OneSave save(*m_ini);
            m_ini->WriteValue(u"A"_s, u"a"_s, u"3"_s);
            m_ini->DeleteKey(u"A"_s, u"b"_s);
            QCOMPARE(m_ini->ReadString(u"A"_s, u"a"_s), u"3"_s);
            QCOMPARE(FileBytes(), "[A]\r\na=1\r\nb=2\r\n");
        }
        QCOMPARE(FileBytes(), "[A]\r\na=3\r\n");
    }

    void failedSaves()
    {
        m_prompts->ExpectMessage(u"clsINI.SaveFile: No file name"_s);
        m_ini->WriteValue(u"A"_s, u"a"_s, u"1"_s);
        QCOMPARE(m_prompts->LastAsked().text, u"Could not save INI file."_s);
        QCOMPARE(m_prompts->LastAsked().icon, UserPrompts::Icon::Critical);
        QCOMPARE(m_prompts->LastAsked().buttons, UserPrompts::Buttons::Ok);

        const QString path = m_folder->filePath(u"gone/test.ini"_s);
        m_ini->LoadINI(path);
        m_prompts->ExpectMessage(u"clsINI.SaveFile: No such file or directory: "_s + QDir::toNativeSeparators(path));
        m_ini->WriteValue(u"A"_s, u"a"_s, u"1"_s);
        QCOMPARE(m_ini->ReadString(u"A"_s, u"a"_s), u"1"_s);
    }

    void unreadableFileIsNotReplaced()
    {
        QVERIFY(QDir().mkdir(m_path));
        QVERIFY_THROWS_EXCEPTION(ProgramError, m_ini->LoadINI(m_path));
        QCOMPARE(m_ini->FileName(), m_path);

        // As when the reason has gone by, but what the file holds was never seen.
        QVERIFY(QDir().rmdir(m_path));
        WriteBytes("[A]\r\na=1\r\n");
        m_prompts->ExpectMessage(u"clsINI.SaveFile: The file could not be read and is not replaced"_s);
        m_ini->WriteValue(u"A"_s, u"b"_s, u"2"_s);
        QCOMPARE(FileBytes(), "[A]\r\na=1\r\n");

        QVERIFY(QFile::remove(m_path));
        m_ini->SaveFile();
        m_ini->DeleteKey(u"A"_s, u"b"_s);
        QCOMPARE(FileBytes(), "[A]\r\n");
    }

private:
    void WriteBytes(const QByteArray &bytes) const
    {
        QFile file(m_path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(bytes), bytes.size());
    }

    QByteArray FileBytes(const QString &path = {}) const
    {
        QFile file(path.isEmpty() ? m_path : path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArrayLiteral("(no file)");
    }

    void Load(const QByteArray &bytes)
    {
        WriteBytes(bytes);
        m_ini->LoadINI(m_path);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
    std::unique_ptr<ScriptedPrompts> m_prompts;
    std::unique_ptr<clsINI> m_ini;
};

QTEST_GUILESS_MAIN(TestIni)
#include "test_ini.moc"
