#include "formatregistry.h"
#include "kit.h"
#include "newformats.h"

#include <QAbstractItemModelTester>
#include <QImage>

#include <optional>

namespace {

using Answer = UserPrompts::Answer;

/// Of the picture in a selected row.
QRgb CentreColour(const QVariant &icon)
{
    return icon.value<QIcon>().pixmap(16, 16, QIcon::Selected).toImage().pixel(8, 8) & RGB_MASK;
}

/// Name, class and picture of each format; the picture as the colour in its middle, "common" for the white of
/// "Checked".
QString Shown(FormatRegistry &formats)
{
    QString shown;
    for (int row = 1; row < formats.rowCount(); ++row) {
        const QModelIndex index = formats.index(row);
        const FormatKind kind = formats.FormatClass(index.data(FormatRegistry::KeyRole).toString());
        shown += u"%1 %2 "_s.arg(index.data().toString()).arg(static_cast<int>(kind)) +
                 QString::number(CentreColour(index.data(Qt::DecorationRole)), 16) + u", "_s;
    }
    return shown.replace(u"ffffff"_s, u"common"_s).chopped(2);
}

} // namespace

class TestFormatRegistry : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_folder.emplace(); }

    void bitmapsComeBeforeNamedFormatsAndNewOnes()
    {
        m_folder->Write(u"formats.ini"_s, "[Formats]\r\nMP3=Lossy\r\nF\0=x\r\nFLAC=Lossless\r\nshn=lossless\r\n"_ba);
        WriteBitmap(u"MP3.bmp"_s, 0xc80a0a);
        WriteBitmap(u"dat.BMP"_s, 0x0ac80a);
        m_prompts.ExpectMessage(u"Unknown format"_s, Answer::No);
        FormatRegistry formats(m_prompts);
        const QAbstractItemModelTester tester(&formats);
        for (int round = 0; round < 2; ++round) {
            formats.LoadFormats();
            // An unusual class word makes a format that is neither, and is not asked about.
            QCOMPARE(Shown(formats), u"dat 2 ac80a, MP3 2 c80a0a, FLAC 1 common, shn 0 common"_s);
        }
        QVERIFY(formats.index(0).data(Qt::DecorationRole).isNull());
        QCOMPARE(formats.index(0).data(FormatRegistry::PopupCaptionRole), u"<Don't Have>"_s);
        QCOMPARE(formats.index(1).data(FormatRegistry::PopupCaptionRole), u"&dat"_s);
        QCOMPARE(formats.GetShowImageKey({}, false), u"Unchecked"_s);
        QCOMPARE(formats.GetShowImageKey(u"never asked about"_s, true), u"WrongDate"_s);
        m_prompts.ExpectMessage(u"Unknown format"_s, Answer::No);
        QCOMPARE(formats.GetShowImageKey(u"WAV"_s, false), u"FormatWAV"_s);
        QVERIFY(Shown(formats).endsWith(u", shn 0 common, WAV 2 common"_s));
        QCOMPARE(FormatNameFromKey(u"FormatWAV"_s), u"WAV"_s);
    }

    void answersAreAskedForOnceAndKept()
    {
        const QByteArray head = "[Formats]\r\n", flac = head + "FLAC=Lossless\r\n";
        for (const auto &[before, answer, shown, after] :
             {std::tuple(flac, Answer::No, u"FLAC 1 common, R&B 2 common"_s, flac + "R&B=Lossy\r\n"),
              {head + "R&B=\r\n", Answer::Yes, u"R&B 1 common"_s, head + "R&B=Lossless\r\n"}}) {
            m_folder->Write(u"formats.ini"_s, before);
            m_prompts.ExpectMessage(u"Unknown format"_s, answer);
            for (int start = 0; start < 2; ++start) {
                FormatRegistry formats(m_prompts);
                formats.LoadFormats();
                formats.FormatClass(u"R&B"_s);
                QCOMPARE(Shown(formats), shown);
            }
            QCOMPARE(m_folder->Read(u"formats.ini"_s), after);
        }
        QCOMPARE(m_prompts.LastAsked().text, u"Detected a new format type: R&B\r\nIs this a lossless format?"_s);
        QCOMPARE(m_prompts.LastAsked().icon, UserPrompts::Icon::Question);
        QCOMPARE(m_prompts.LastAsked().buttons, UserPrompts::Buttons::YesNo);
    }

    void whatCannotBeLoadedIsReported()
    {
        const QByteArray ini = "[Formats]\r\nCD=Lossless\r\nMP3=Lossy\r\n[\r\nTape=Lossless\r\n";
        m_folder->Write(u"formats.ini"_s, ini);
        WriteBitmap(u"CD.bmp"_s, 0x010203);
        const QString mp3 = m_folder->Write(u"Formats/MP3.bmp"_s, "BM this is no picture");
        const QString tape = m_folder->Write(u"Formats/Tape.bmp"_s, "BM nor is this");
        FormatRegistry formats(m_prompts);
        const FailureRecorder failures;
        // What the file classes behind the slip is asked about, once the slip was reported.
        m_prompts.ExpectMessage(u"Unknown format"_s, UserPrompts::Answer::No);
        m_prompts.SetWhileAsked(
            [&](const auto &) { QVERIFY(failures.reports.at(0).description.contains(u"formats.ini.damaged"_s)); });
        QVERIFY(!Guarded("test", "LoadFormats", [&] { formats.LoadFormats(); }));
        m_prompts.SetWhileAsked({});
        const QString pictures = u"The picture %1 cannot be loaded.\r\nThe picture %2 cannot be loaded."_s;
        QCOMPARE(failures.reports.back().description, pictures.arg(mp3, tape));
        QCOMPARE(Shown(formats), u"CD 1 10203, MP3 2 common, Tape 2 common"_s);
        QCOMPARE(m_folder->Read(u"formats.ini.damaged"_s), ini);
    }

    void newFormatsArriveOnce()
    {
        const QString own = u"own/formats.ini"_s, picture = u"Formats/DAT.bmp"_s;
        const QByteArray empty = "[Formats]\r\n", mine = empty + "CD=Lossy\r\n", dat = "DAT=Lossless\r\n";
        m_folder->Write(u"share/"_s + picture, "DAT");
        const auto start = [&](const QByteArray &shipped) {
            m_folder->Write(u"share/formats.ini"_s, empty + "CD=Lossless\r\n" + shipped);
            BringNewFormats(m_folder->Path(u"share"_s), m_folder->Path(u"own"_s), m_prompts);
            return m_folder->Read(own);
        };
        m_folder->Write(own, mine);
        QCOMPARE(start({}), mine);
        QCOMPARE(start(dat), mine + dat);
        QCOMPARE(m_folder->Read(u"own/"_s + picture), "DAT");
        // What was deleted does not come back, and what was damaged is not written.
        for (const QByteArray &left : {empty, dat}) {
            m_folder->Write(own, left);
            m_folder->Write(u"own/"_s + picture, "my own");
            QCOMPARE(start(left == dat ? "MP3=Lossy\r\n" : dat), left);
            QCOMPARE(m_folder->Read(u"own/"_s + picture), "my own");
        }
    }

    void shippedFormatsAreAllKnown()
    {
        SetProgramFolder(QStringLiteral(DISCBOOK_FORMATS_FOLDER));
        FormatRegistry formats(m_prompts);
        formats.LoadFormats();
        QCOMPARE(formats.rowCount(), 19);
        QVERIFY2(!Shown(formats).contains(u" 0 "), qPrintable(Shown(formats)));
    }

    void cleanup() { m_prompts.VerifyDone(); }

private:
    void WriteBitmap(const QString &name, QRgb colour)
    {
        QImage image(32, 32, QImage::Format_RGB32);
        image.fill(colour);
        QVERIFY(image.save(m_folder->Write(u"Formats/"_s + name, {}), "BMP"));
    }

    std::optional<TestProgramFolder> m_folder;
    ScriptedPrompts m_prompts;
};

QTEST_MAIN(TestFormatRegistry)
#include "test_formatregistry.moc"
