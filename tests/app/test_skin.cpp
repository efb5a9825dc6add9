#include <QDir>
#include <QFile>
#include <QImageReader>
#include <QTest>

// The skin the build draws and composes beside the program.
class SkinTest : public QObject
{
    Q_OBJECT

private:
    const QDir skin = QDir(QStringLiteral(LANTERN_PROGRAM_DIR "/SKIN"));

private slots:
    void picturesLoad_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("welcome") << "WELCOME.BMP";
        for (const char *stem : {"ｳｪﾌﾞﾛｸﾞ", "ﾏｲﾅｽｲｵﾝ", "ｵｰｶﾞﾆｯｸ", "ｸｰﾙﾋﾞｽﾞ", "ｾﾚﾌﾞﾘﾃｨ"})
            QTest::newRow(stem) << QStringLiteral("CG/%1.JPEG").arg(QString::fromUtf8(stem));
    }

    void picturesLoad()
    {
        QFETCH(QString, path);
        QImageReader reader(skin.filePath(path));
        const QImage image = reader.read();
        QVERIFY2(!image.isNull(), qPrintable(path + ": " + reader.errorString()));
        QCOMPARE(image.size(), QSize(1920, 1080));
    }

    void rotationsHaveEnoughPictures()
    {
        // The rotations list "*.???": the themes (".JPEG") are not among them.
        const QStringList listed = QDir(skin.filePath("CG")).entryList({"*.???"}, QDir::Files);
        QVERIFY2(listed.size() >= 5, qPrintable(listed.join(' ')));
        for (const QString &name : listed)
            QVERIFY(!QImageReader(skin.filePath("CG/" + name)).read().isNull());
    }

    void soundsAndTune()
    {
        for (const char *name : {"1.WAV", "2.WAV", "3.WAV"}) {
            QFile wav(skin.filePath(name));
            QVERIFY2(wav.open(QIODevice::ReadOnly), name);
            const QByteArray header = wav.read(44);
            QVERIFY(header.startsWith("RIFF") && header.mid(8, 8) == "WAVEfmt ");
            QVERIFY(wav.size() > 44 + 2000); // some tens of milliseconds of sound
        }
        QFile midi(skin.filePath("2.MIDI"));
        QVERIFY(midi.open(QIODevice::ReadOnly));
        QVERIFY(midi.read(4) == "MThd");
        QVERIFY(midi.readAll().contains("MTrk"));
    }
};

QTEST_GUILESS_MAIN(SkinTest)
#include "test_skin.moc"
