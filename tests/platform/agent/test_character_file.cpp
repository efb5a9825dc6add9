#include "platform/agent/CharacterFile.h"
#include "platform/vb/VbError.h"

#include <QFile>
#include <QPainter>
#include <QRandomGenerator>
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

// The names the assistant routine and the engine ask every character for.
const QStringList RequiredAnimations{
    "RestPose", "Blink", "Greet", "Acknowledge", "Show", "Hide", "Speak",
    "MoveLeft", "MoveRight", "MoveUp", "MoveDown",
    "GestureLeft", "GestureRight", "GestureUp", "GestureDown"};
const QStringList RequiredStates{
    "Showing", "Hiding", "Speaking", "Moving", "Gesturing", "Idling", "Listening", "Hearing"};

} // namespace

class TestCharacterFile : public QObject
{
    Q_OBJECT

private slots:
    void writtenCharacterReadsBack()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("TEST.ACS"));
        QVERIFY(smallCharacter().write(path));

        const CharacterFile read = CharacterFile::read(path);
        QCOMPARE(read.name, QStringLiteral("テスト"));
        QCOMPARE(read.size, QSize(40, 50));
        QCOMPARE(read.imageCount(), 2);
        QCOMPARE(read.image(1).pixelColor(10, 10), QColor(Qt::blue));
        QCOMPARE(read.image(1).pixelColor(30, 30).alpha(), 0);
        QCOMPARE(read.balloonBackground, QColor(0x11, 0x22, 0x33));
        const QList<CharacterFrame> greet = read.animation(QStringLiteral("greet"));
        QCOMPARE(greet.size(), 3);
        QCOMPARE(greet.at(1).image, 1);
        QCOMPARE(greet.at(1).duration, 120);
        QVERIFY(read.hasState(QStringLiteral("SPEAKING")));
        QCOMPARE(read.state(QStringLiteral("speaking")), QStringList{QStringLiteral("Greet")});
        QVERIFY(!read.hasAnimation(QStringLiteral("Wave")));
    }

    void damagedFilesFailCleanly_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("GOOD.ACS"));
        smallCharacter().write(path);
        QFile file(path);
        file.open(QIODevice::ReadOnly);
        const QByteArray good = file.readAll();

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
    }

    void damagedFilesFailCleanly()
    {
        QFETCH(QByteArray, bytes);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("BAD.ACS"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        file.close();
        QVERIFY_THROWS_EXCEPTION(VbError, CharacterFile::read(path));
    }

    void scrambledFilesNeverCrash()
    {
        QTemporaryDir dir;
        const QString good = dir.filePath(QStringLiteral("GOOD.ACS"));
        QVERIFY(smallCharacter().write(good));
        QFile file(good);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();

        // Bytes changed here and there, from the length fields to the pictures:
        // every file either reads whole or is refused.
        QRandomGenerator random(932);
        const QString path = dir.filePath(QStringLiteral("SCRAMBLED.ACS"));
        int refused = 0;
        for (int round = 0; round < 300; ++round) {
            QByteArray scrambled = bytes;
            for (int i = 0; i < 1 + round % 4; ++i)
                scrambled[random.bounded(int(scrambled.size()))] = char(random.bounded(256));
            QFile out(path);
            QVERIFY(out.open(QIODevice::WriteOnly));
            out.write(scrambled);
            out.close();
            try {
                const CharacterFile read = CharacterFile::read(path);
                QVERIFY(read.imageCount() > 0 && !read.animations.isEmpty());
            } catch (const VbError &) {
                ++refused;
            }
        }
        QVERIFY(refused > 0);
    }

    void missingFileFails()
    {
        QVERIFY_THROWS_EXCEPTION(VbError, CharacterFile::read(QStringLiteral("/nonexistent/NONE.ACS")));
    }

    void animationShowingAMissingPictureIsRejected()
    {
        CharacterFile character = smallCharacter();
        character.animations.insert(QStringLiteral("Broken"), {{7, 100}});
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("BROKEN.ACS"));
        QVERIFY(character.write(path));
        QVERIFY_THROWS_EXCEPTION(VbError, CharacterFile::read(path));
    }

    void shippedCharactersHaveEverythingTheRoutineUses_data()
    {
        QTest::addColumn<QString>("file");
        QTest::newRow("lantern") << QStringLiteral("LANTERN.ACS");
        QTest::newRow("owl") << QStringLiteral("FUKURO.ACS");
    }

    void shippedCharactersHaveEverythingTheRoutineUses()
    {
        QFETCH(QString, file);
        const CharacterFile character = CharacterFile::read(QStringLiteral(LANTERN_PROGRAM_DIR "/CHARS/") + file);
        for (const QString &name : RequiredAnimations)
            QVERIFY2(character.hasAnimation(name), qPrintable(name));
        for (const QString &name : RequiredStates)
            QVERIFY2(character.hasState(name), qPrintable(name));
        QCOMPARE(character.animation(QStringLiteral("RestPose")).size(), 1);
        // Every picture has the character's size and something drawn on it.
        QVERIFY(character.imageCount() > 0);
        for (int i = 0; i < character.imageCount(); ++i)
            QCOMPARE(character.image(i).size(), character.size);
        const QImage rest = character.image(character.animation(QStringLiteral("RestPose")).first().image);
        const QColor middle = rest.pixelColor(rest.width() / 2, rest.height() / 2);
        QCOMPARE(middle.alpha(), 255);
        QCOMPARE(rest.pixelColor(0, 0).alpha(), 0);
    }

    void shippedCharactersLookDifferent()
    {
        const CharacterFile lantern = CharacterFile::read(QStringLiteral(LANTERN_PROGRAM_DIR "/CHARS/LANTERN.ACS"));
        const CharacterFile owl = CharacterFile::read(QStringLiteral(LANTERN_PROGRAM_DIR "/CHARS/FUKURO.ACS"));
        QVERIFY(lantern.name != owl.name);
        QVERIFY(lantern.image(0) != owl.image(0));
        QVERIFY(lantern.balloonBorder != owl.balloonBorder);
    }
};

QTEST_MAIN(TestCharacterFile)
#include "test_character_file.moc"
