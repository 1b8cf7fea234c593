#include "failures.h"
#include "formatregistry.h"
#include "programfolder.h"
#include "scriptedprompts.h"

#include <QAbstractItemModelTester>
#include <QImage>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

void WriteBitmap(const TestProgramFolder &folder, const QString &name, QRgb colour)
{
    QDir().mkpath(folder.Path(u"Formats"_s));
    QImage image(32, 32, QImage::Format_RGB32);
    image.fill(colour);
    QVERIFY(image.save(folder.Path(u"Formats/"_s + name), "BMP"));
}

/// The list as picker and pop-up menu show it: key, text and caption of each row.
QStringList Rows(const FormatRegistry &formats)
{
    QStringList rows;
    for (int i = 0; i < formats.rowCount(); ++i) {
        const QModelIndex index = formats.index(i);
        rows.append(u"%1|%2|%3"_s.arg(
            index.data(FormatRegistry::KeyRole).toString(), index.data().toString(),
            index.data(FormatRegistry::PopupCaptionRole).toString()));
    }
    return rows;
}

QRgb CentreColour(const QVariant &icon)
{
    return icon.value<QIcon>().pixmap(16, 16).toImage().pixel(8, 8);
}

} // namespace

class TestFormatRegistry : public QObject
{
    Q_OBJECT

private slots:
    void bitmapsComeBeforeNamedFormats()
    {
        const TestProgramFolder folder;
        folder.Write(u"formats.ini"_s, "[Formats]\r\nMP3=Lossy\r\nFLAC=Lossless\r\nshn=lossless\r\n");
        WriteBitmap(folder, u"MP3.bmp"_s, qRgb(200, 10, 10));
        WriteBitmap(folder, u"dat.BMP"_s, qRgb(10, 200, 10));
        ScriptedPrompts prompts;
        prompts.ExpectMessage(u"Unknown format"_s, UserPrompts::Answer::No);
        FormatRegistry formats(prompts);
        const QAbstractItemModelTester tester(&formats);
        formats.LoadFormats();

        QCOMPARE(
            Rows(formats),
            QStringList(
                {u"||<Don't Have>"_s, u"dat|dat|&dat"_s, u"MP3|MP3|&MP3"_s, u"FLAC|FLAC|&FLAC"_s, u"shn|shn|&shn"_s}));
        QCOMPARE(CentreColour(formats.index(2).data(Qt::DecorationRole)), qRgb(200, 10, 10));
        QCOMPARE(
            CentreColour(formats.index(3).data(Qt::DecorationRole)),
            CentreColour(formats.Pictures().Picture(u"Checked"_s)));
        QVERIFY(formats.index(0).data(Qt::DecorationRole).isNull());
        QCOMPARE(formats.FormatClass(u"FLAC"_s), FormatKind::Lossless);
        QCOMPARE(formats.FormatClass(u"MP3"_s), FormatKind::Lossy);
        // An unusual class word makes a format that is neither, and is not asked about.
        QCOMPARE(formats.FormatClass(u"shn"_s), FormatKind::Unknown);
    }

    void answersAreAskedForOnceAndKept_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<UserPrompts::Answer>("answer");
        QTest::addColumn<FormatKind>("kind");
        QTest::addColumn<QByteArray>("after");
        QTest::newRow("lossless") << QByteArray() << UserPrompts::Answer::Yes << FormatKind::Lossless
                                  << QByteArray("[Formats]\r\nR&B tape=Lossless\r\n");
        QTest::newRow("lossy") << QByteArray("[Formats]\r\nFLAC=Lossless\r\n") << UserPrompts::Answer::No
                               << FormatKind::Lossy << QByteArray("[Formats]\r\nFLAC=Lossless\r\nR&B tape=Lossy\r\n");
        QTest::newRow("undecided") << QByteArray("[Formats]\r\nR&B tape=\r\n") << UserPrompts::Answer::Yes
                                   << FormatKind::Lossless << QByteArray("[Formats]\r\nR&B tape=Lossless\r\n");
    }

    void answersAreAskedForOnceAndKept()
    {
        QFETCH(QByteArray, before);
        QFETCH(UserPrompts::Answer, answer);
        QFETCH(FormatKind, kind);
        QFETCH(QByteArray, after);
        const TestProgramFolder folder;
        if (!before.isEmpty())
            folder.Write(u"formats.ini"_s, before);
        {
            ScriptedPrompts prompts;
            prompts.ExpectMessage(u"Unknown format"_s, answer);
            FormatRegistry formats(prompts);
            formats.LoadFormats();
            QCOMPARE(formats.FormatClass(u"R&B tape"_s), kind);
            QCOMPARE(formats.FormatClass(u"R&B tape"_s), kind);
            QCOMPARE(prompts.LastAsked().text, u"Detected a new format type: R&B tape\r\nIs this a lossless format?"_s);
            QCOMPARE(prompts.LastAsked().icon, UserPrompts::Icon::Question);
            QCOMPARE(prompts.LastAsked().buttons, UserPrompts::Buttons::YesNo);
            QCOMPARE(folder.Read(u"formats.ini"_s), after);
        }
        ScriptedPrompts quiet;
        FormatRegistry again(quiet);
        again.LoadFormats();
        QCOMPARE(again.FormatClass(u"R&B tape"_s), kind);
    }

    void pictureKeys()
    {
        const TestProgramFolder folder;
        ScriptedPrompts prompts;
        FormatRegistry formats(prompts);
        formats.LoadFormats();
        QCOMPARE(formats.GetShowImageKey({}, false), u"Unchecked"_s);
        QCOMPARE(formats.GetShowImageKey(u"never asked about"_s, true), u"WrongDate"_s);
        QCOMPARE(formats.FormatClass({}), FormatKind::Unknown);
        QCOMPARE(formats.rowCount(), 1);
        prompts.ExpectMessage(u"Unknown format"_s, UserPrompts::Answer::No);
        const QString key = formats.GetShowImageKey(u"MP3"_s, false);
        QCOMPARE(key, u"FormatMP3"_s);
        QCOMPARE(FormatNameFromKey(key), u"MP3"_s);
        QVERIFY(!formats.Pictures().Picture(key).isNull());
    }

    void whatCannotBeLoadedIsReported_data()
    {
        QTest::addColumn<QByteArray>("ini");
        QTest::addColumn<QStringList>("reported");
        QTest::addColumn<QString>("classes");
        QTest::newRow("bitmaps") << QByteArray("[Formats]\r\nCD=Lossless\r\nMP3=Lossy\r\nTape=Lossy\r\nWAV=New\r\n")
                                 << QStringList{u"MP3.bmp cannot"_s, u"Tape.bmp cannot"_s}
                                 << u"CD 1, MP3 2, Tape 2, WAV 0"_s;
        // The rest of the file may class MP3 and Tape: they are not asked about.
        QTest::newRow("formats.ini too")
            << QByteArray("[Formats]\r\nCD=Lossless\r\n[\r\nTape=Lossy\r\n")
            << QStringList{u"formats.ini.damaged"_s, u"MP3.bmp cannot"_s, u"Tape.bmp cannot"_s}
            << u"CD 1, MP3 0, Tape 0"_s;
    }

    void whatCannotBeLoadedIsReported()
    {
        QFETCH(const QByteArray, ini);
        QFETCH(const QStringList, reported);
        const TestProgramFolder folder;
        folder.Write(u"formats.ini"_s, ini);
        WriteBitmap(folder, u"CD.bmp"_s, qRgb(1, 2, 3));
        for (const QString &name : {u"Formats/MP3.bmp"_s, u"Formats/Tape.bmp"_s})
            folder.Write(name, "BM this is no picture");
        ScriptedPrompts prompts;
        FormatRegistry formats(prompts);
        try {
            formats.LoadFormats();
            QFAIL("loaded");
        } catch (const ProgramError &error) {
            for (const QString &name : reported)
                QVERIFY2(error.description().contains(name), error.what());
        }
        QStringList classes;
        for (int i = 1; i < formats.rowCount(); ++i) {
            const QString name = formats.index(i).data().toString();
            classes.append(u"%1 %2"_s.arg(name).arg(static_cast<int>(formats.FormatClass(name))));
            QVERIFY(!formats.index(i).data(Qt::DecorationRole).isNull());
        }
        QTEST(classes.join(u", "_s), "classes");
        QCOMPARE(folder.Read(u"formats.ini"_s), ini);
    }

    void shippedFormatsAreAllKnown()
    {
        SetProgramFolder(QStringLiteral(DISCBOOK_FORMATS_FOLDER));
        ScriptedPrompts prompts;
        FormatRegistry formats(prompts);
        formats.LoadFormats();
        SetProgramFolder({});
        QCOMPARE(formats.rowCount(), 19);
        for (int i = 1; i < formats.rowCount(); ++i)
            QVERIFY2(
                formats.FormatClass(formats.index(i).data().toString()) != FormatKind::Unknown,
                qPrintable(formats.index(i).data().toString()));
    }
};

QTEST_MAIN(TestFormatRegistry)
#include "test_formatregistry.moc"
