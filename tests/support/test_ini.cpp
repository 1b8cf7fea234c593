#include "clsINI.h"
#include "failures.h"
#include "flatfile.h"
#include "scriptedprompts.h"
#include "table.h"

#include <QDir>
#include <QTemporaryDir>

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
        Table<QByteArray, QByteArray>("before", "after")
            .Row("empty", "", "")
            .Row("as written", "[A]\r\nb=1\r\n\r\n[B]\r\nc=2\r\n", "[A]\r\nb=1\r\n\r\n[B]\r\nc=2\r\n")
            .Row("repeated section", "[A]\r\nb=1\r\na=2\r\n[A]\r\nc=3", "[A]\r\na=2\r\nb=1\r\n\r\n[A]\r\nc=3\r\n")
            .Row("repeated key", "[A]\r\nb=1\r\nb=0\r\n", "[A]\r\nb=1\r\nb=0\r\n")
            .Row("empty sections", "[A]\r\n[]\r\n[B]\r\n", "[A]\r\n\r\n[]\r\n\r\n[B]\r\n")
            .Row("no closing bracket", "[Main\r\n", "[Mai]\r\n")
            .Row("text behind the bracket", "[A] \r\n[B]x\r\n", "[A]]\r\n\r\n[B]]\r\n")
            .Row(
                "comments and others", ";c=1\r\n\r\n  \r\nplain\r\n[A]\r\n;k=1\r\n \r\nplain\r\nk=1\r\n",
                "[A]\r\nk=1\r\n")
            .Row("blanks belong to name and value", "[ A ]\r\n k = v \r\n", "[ A ]\r\n k = v \r\n")
            .Row("blank before [ and ;", "[A]\r\n [B]\r\n [B]=1\r\n ;c=2\r\n", "[A]\r\n ;c=2\r\n [B]=1\r\n")
            .Row("only the first = splits", "[A]\r\nk=a=b\r\n=x\r\nn=\r\n", "[A]\r\n=x\r\nk=a=b\r\nn=\r\n")
            .Row("line feeds alone", "[A]\nb=1\n\na=2\n", "[A]\r\na=2\r\nb=1\r\n")
            .Row("carriage returns alone", "[A]\rb=1\ra=2", "[A]\r\na=2\r\nb=1\r\n")
            .Row("case counts", "[A]\r\nb=1\r\nB=2\r\n[a]\r\n", "[A]\r\nB=2\r\nb=1\r\n\r\n[a]\r\n")
            .Row("byte-order mark", "\xEF\xBB\xBF[\xC3\x84]\r\n", "[\xC3\x84]\r\n")
            .Row("not UTF-8", "[A]\r\nk=\x80\xE9\r\n", "[A]\r\nk=\xE2\x82\xAC\xC3\xA9\r\n");
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
        Table<QByteArray, QByteArray>("bytes", "read")
            .Row("key outside", "\r\n;c\r\nk=\x80\r\n[A]\r\n", "")
            .Row("lone bracket", "[A]\nk=1\n[\n[B]\n", "[A]\r\nk=1\r\n\r\n");
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
            QCOMPARE(ReadWholeFile(copy), bytes);
            QCOMPARE(FileBytes(), read + "[S]\r\nn=v\r\n");
        }
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files).size(), 3);
    }

    void keyOrder_data()
    {
        Table<QString, QString>("written", "stored")
            .Row("numbers", u"10,9,1"_s, u"1,9,10"_s)
            .Row("equal numbers keep their order", u"2,1,02, 2"_s, u"1,2,02, 2"_s)
            .Row("negative", u"0,-1,-10"_s, u"-10,-1,0"_s)
            .Row("texts", u"b,a,B,_,ab"_s, u"B,_,a,ab,b"_s)
            .Row("number among texts", u"FLAC,12,MP3,8"_s, u"8,12,FLAC,MP3"_s)
            .Row("text among numbers", u"9,10,a,1x"_s, u"1x,9,10,a"_s)
            .Row("existing counts as whole", u"2.4,2"_s, u"2.4,2"_s)
            .Row("beyond 32 bits", u"99999999999,1,99999999998"_s, u"1,99999999998,99999999999"_s)
            .Row("code of the character", u"\u00E4,z,Z"_s, u"Z,z,\u00E4"_s);
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

    void readsFirstMatchOfTheExactName()
    {
        Load("[A]\r\na=1\r\nk=x\r\nk=a\r\ne=\r\nx = y\r\n[A]\r\nc=3\r\n");
        QString values;
        for (const QString &key : {u"a"_s, u"k"_s, u"e"_s, u"c"_s, u"K"_s, u"x"_s})
            values += m_ini->ReadString(u"A"_s, key, u"none"_s) + u'|';
        QCOMPARE(values, u"1|x||none|none|none|"_s);
        QCOMPARE(m_ini->ReadString(u"a"_s, u"a"_s, u"none"_s), u"none"_s);
        QCOMPARE(m_ini->ReadString(u"none"_s, u"none"_s), QString());
        QCOMPARE(m_ini->NumberOfKeys(u"none"_s), 0);
        QCOMPARE(m_ini->KeyName(u"none"_s, 99), QString());
    }

    void readsNumbersAndFlags()
    {
        m_ini->SetAllowSaveFile(false);
        QCOMPARE(m_ini->ReadLong(u"S"_s, u"k"_s, -5), -5);
        QString numbers;
        for (const QString &value : {u""_s, u"12abc"_s, u"abc"_s, u"-2.5"_s, u"-2147483648"_s}) {
            m_ini->WriteValue(u"S"_s, u"k"_s, value);
            numbers += QString::number(m_ini->ReadLong(u"S"_s, u"k"_s, -5)) + u' ';
        }
        QCOMPARE(numbers, u"0 12 0 -2 -2147483648 "_s);
        QString flags;
        for (const QString &value : {u"True"_s, u"tRUE"_s, u"False"_s, u"1"_s, u""_s}) {
            m_ini->WriteValue(u"S"_s, u"k"_s, value);
            for (const bool fallback : {false, true})
                flags += m_ini->ReadFlag(u"S"_s, u"k"_s, fallback) ? u'+' : u'-';
        }
        QCOMPARE(flags, u"++++---+-+"_s); // without and with true as the default
        QVERIFY(m_ini->ReadFlag(u"S"_s, u"none"_s, true) && !m_ini->ReadFlag(u"S"_s, u"none"_s, false));
    }

    void firstWriteMakesTheFile()
    {
        m_ini->LoadINI(m_path);
        QVERIFY(!QFile::exists(m_path));
        m_ini->WriteFlag(u"A"_s, u"k"_s, true);
        QCOMPARE(FileBytes(), "[A]\r\nk=True\r\n");
        m_ini->WriteFlag(u"A"_s, u"k"_s, false);
        m_ini->WriteValue(u"B\r\n[C]"_s, u"k\n"_s, u"1\r\n[C]\rx=2"_s);
        QCOMPARE(FileBytes(), "[A]\r\nk=False\r\n\r\n[B[C]]\r\nk=1[C]x=2\r\n");
    }

    void changes()
    {
        Load("[A]\r\na=1\r\nb=2\r\nb=3\r\n[B]\r\nc=4\r\nd=5\r\n[A]\r\nz=9\r\n[C]\r\n");
        m_ini->WriteValue(u"A"_s, u"a"_s, u"zz"_s);
        const QByteArray rest = "\r\n[A]\r\nz=9\r\n\r\n[C]\r\n";
        QCOMPARE(FileBytes(), "[A]\r\na=zz\r\nb=2\r\nb=3\r\n\r\n[B]\r\nc=4\r\nd=5\r\n" + rest);

        WriteFileAtomically(m_path, "untouched");
        m_ini->SetKeyName(u"A"_s, 0, u"x"_s);
        m_ini->SetKeyName(u"none"_s, 0, u"x"_s);
        QCOMPARE(FileBytes(), "untouched");
        m_ini->DeleteKey(u"A"_s, u"none"_s);
        QCOMPARE(FileBytes(), "[A]\r\nx=zz\r\nb=2\r\nb=3\r\n\r\n[B]\r\nc=4\r\nd=5\r\n" + rest);
        m_ini->DeleteKey(u"A"_s, u"b"_s);
        m_ini->DeleteKey(u"B"_s, u"c"_s);
        QCOMPARE(FileBytes(), "[A]\r\nx=zz\r\nb=3\r\n\r\n[B]\r\nd=5\r\n" + rest);
        m_ini->DeleteSection(u"B"_s);
        QCOMPARE(FileBytes(), "[A]\r\nx=zz\r\nb=3\r\n" + rest);
        m_ini->DeleteSection(u"A"_s);
        QCOMPARE(m_ini->SectionName(1), u"C"_s);
        WriteFileAtomically(m_path, "untouched");
        m_ini->DeleteSection(u"none"_s);
        QCOMPARE(FileBytes(), "[A]\r\nz=9\r\n\r\n[C]\r\n");
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
        WriteFileAtomically(m_path, "[A]\r\na=1\r\n");
        m_prompts->ExpectMessage(u"clsINI.SaveFile: The file could not be read and is not replaced"_s);
        m_ini->WriteValue(u"A"_s, u"b"_s, u"2"_s);
        QCOMPARE(FileBytes(), "[A]\r\na=1\r\n");

        QVERIFY(QFile::remove(m_path));
        m_ini->SaveFile();
        m_ini->DeleteKey(u"A"_s, u"b"_s);
        QCOMPARE(FileBytes(), "[A]\r\n");
    }

private:
    QByteArray FileBytes() const { return ReadWholeFile(m_path); }

    void Load(const QByteArray &bytes)
    {
        WriteFileAtomically(m_path, bytes);
        m_ini->LoadINI(m_path);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
    std::unique_ptr<ScriptedPrompts> m_prompts;
    std::unique_ptr<clsINI> m_ini;
};

QTEST_GUILESS_MAIN(TestIni)
#include "test_ini.moc"
