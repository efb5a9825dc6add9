#include <QDir>
#include <QFile>
#include <QImageReader>
#include <QTest>

// The skin the build draws and composes beside the program, under the names
// the settings, the theme buttons and the control sounds look for (the tune is
// played from there by the music player's own suite).
class SkinTest : public QObject
{
    Q_OBJECT

    const QDir skin = QDir(QStringLiteral(LANTERN_PROGRAM_DIR "/SKIN"));

private slots:
    void shippedFiles_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("WELCOME.BMP") << "WELCOME.BMP";
        for (const char *stem : {"ｳｪﾌﾞﾛｸﾞ", "ﾏｲﾅｽｲｵﾝ", "ｵｰｶﾞﾆｯｸ", "ｸｰﾙﾋﾞｽﾞ", "ｾﾚﾌﾞﾘﾃｨ"})
            QTest::newRow(stem) << QStringLiteral("CG/%1.JPEG").arg(QString::fromUtf8(stem));
        for (const char *name : {"1.WAV", "2.WAV", "3.WAV"})
            QTest::newRow(name) << name;
    }

    void shippedFiles()
    {
        QFETCH(QString, path);
        QFile file(skin.filePath(path));
        QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(path));
        const QByteArray head = file.read(44);
        if (path.endsWith(".WAV")) {
            QVERIFY(head.startsWith("RIFF") && head.mid(8, 8) == "WAVEfmt ");
            QVERIFY(file.size() > 44 + 2000); // some tens of milliseconds of sound
        } else {
            QImageReader reader(file.fileName());
            QVERIFY2(reader.read().size() == QSize(1920, 1080), qPrintable(reader.errorString()));
        }
    }

    void rotationsHaveEnoughPictures()
    {
        // The rotations list "*.???": the themes (".JPEG") are not among them.
        const QStringList listed = QDir(skin.filePath("CG")).entryList({"*.???"}, QDir::Files);
        QVERIFY2(listed.size() >= 5, qPrintable(listed.join(' ')));
        for (const QString &name : listed)
            QVERIFY2(!QImageReader(skin.filePath("CG/" + name)).read().isNull(), qPrintable(name));
    }
};

QTEST_GUILESS_MAIN(SkinTest)
#include "test_skin.moc"
