#include "platform/agent/CharacterFile.h"
#include "platform/vb/VbError.h"
#include "support/FileBytes.h"

#include <QPainter>
#include <QTemporaryDir>
#include <QTest>

namespace {

CharacterFile smallCharacter()
{
    CharacterFile character;
    character.name = QStringLiteral("テスト");
    character.size = QSize(40, 50);
    for (const QColor colour : {QColor(Qt::red), QColor(Qt::blue)}) {
        QImage image(character.size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter(&image).fillRect(5, 5, 20, 20, colour);
        character.images.append(image);
    }
    character.balloonBackground = QColor(0x11, 0x22, 0x33);
    character.animations.insert(QStringLiteral("RestPose"), {{0, 100}});
    character.animations.insert(QStringLiteral("Greet"), {{0, 50}, {1, 120}, {0, 80}});
    character.states.insert(QStringLiteral("Speaking"), {QStringLiteral("Greet")});
    return character;
}

QByteArray bytesOf(const CharacterFile &character)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("C.ACS"));
    return character.write(path) ? fileBytes(path) : QByteArray();
}

CharacterFile readBytes(const QByteArray &bytes)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("C.ACS"));
    writeFileBytes(path, bytes);
    return CharacterFile::read(path);
}

} // namespace

class TestCharacterFile : public QObject
{
    Q_OBJECT

private slots:
    void writtenCharacterReadsBack()
    {
        const CharacterFile read = readBytes(bytesOf(smallCharacter()));
        QCOMPARE(read.name, QStringLiteral("テスト"));
        QCOMPARE(read.size, QSize(40, 50));
        QCOMPARE(read.imageCount(), 2);
        QCOMPARE(read.image(1).pixelColor(10, 10), QColor(Qt::blue));
        QCOMPARE(read.image(1).pixelColor(30, 30).alpha(), 0);
        QCOMPARE(read.balloonBackground, QColor(0x11, 0x22, 0x33));
        // Names are found whatever their letter case.
        const QList<CharacterFrame> greet = read.animation(QStringLiteral("greet"));
        QCOMPARE(greet.size(), 3);
        QCOMPARE(std::pair(greet.at(1).image, greet.at(1).duration), std::pair(1, 120));
        QCOMPARE(read.state(QStringLiteral("SPEAKING")), QStringList{QStringLiteral("Greet")});
        QVERIFY(!read.hasAnimation(QStringLiteral("Wave")));
        QVERIFY_THROWS_EXCEPTION(VbError, CharacterFile::read(QStringLiteral("/nonexistent/NONE.ACS")));
    }

    void damagedFilesAreRefused_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        const QByteArray good = bytesOf(smallCharacter());
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("foreign") << QByteArray("ACSF\x01\x00\x00\x00 not ours");
        QTest::newRow("cut short") << good.left(good.size() / 2);
        QByteArray badVersion = good;
        badVersion[5] = 9;
        QTest::newRow("unknown version") << badVersion;
        QByteArray badPicture = good;
        badPicture[badPicture.size() - 30] = '\xFF';
        badPicture[badPicture.size() - 31] = '\x00';
        QTest::newRow("damaged picture") << badPicture;
        CharacterFile missingPicture = smallCharacter();
        missingPicture.animations.insert(QStringLiteral("Broken"), {{7, 100}});
        QTest::newRow("animation of a missing picture") << bytesOf(missingPicture);
    }

    void damagedFilesAreRefused()
    {
        QFETCH(QByteArray, bytes);
        QVERIFY_THROWS_EXCEPTION(VbError, readBytes(bytes));
    }

    // The shipped characters have every animation and state the assistant
    // routine and the engine ask for, and pictures of their size.
    void shippedCharacters_data()
    {
        QTest::addColumn<QString>("file");
        QTest::newRow("lantern") << QStringLiteral("LANTERN.ACS");
        QTest::newRow("owl") << QStringLiteral("FUKURO.ACS");
    }

    void shippedCharacters()
    {
        QFETCH(QString, file);
        const CharacterFile character = CharacterFile::read(QStringLiteral(LANTERN_PROGRAM_DIR "/CHARS/") + file);
        for (const char *name : {"RestPose", "Blink", "Greet", "Acknowledge", "Show", "Hide", "Speak", "MoveLeft",
                                 "MoveRight", "MoveUp", "MoveDown", "GestureLeft", "GestureRight", "GestureUp", "GestureDown"})
            QVERIFY2(character.hasAnimation(name), name);
        for (const char *name : {"Showing", "Hiding", "Speaking", "Moving", "Gesturing", "Idling", "Listening", "Hearing"})
            QVERIFY2(character.hasState(name), name);
        for (int i = 0; i < character.imageCount(); ++i)
            QCOMPARE(character.image(i).size(), character.size);
        const QImage rest = character.image(character.animation(QStringLiteral("RestPose")).first().image);
        QCOMPARE(rest.pixelColor(rest.width() / 2, rest.height() / 2).alpha(), 255);
        QCOMPARE(rest.pixelColor(0, 0).alpha(), 0);
        const CharacterFile other = CharacterFile::read(QStringLiteral(LANTERN_PROGRAM_DIR "/CHARS/LANTERN.ACS"));
        QCOMPARE(character.name == other.name, file == "LANTERN.ACS");
        QCOMPARE(character.image(0) == other.image(0), file == "LANTERN.ACS");
    }
};

QTEST_MAIN(TestCharacterFile)
#include "test_character_file.moc"
