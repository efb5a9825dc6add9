#include "platform/agent/AgentCharacter.h"
#include "platform/agent/CharacterWindow.h"
#include "platform/agent/SpeechBalloon.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>

// Whether a window takes the focus is the window system's business: this
// suite runs on the X display when there is one (the off-screen platform
// activates every window it shows).
class TestCharacterFocus : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (QGuiApplication::platformName() != u"xcb")
            QSKIP("needs an X display");
    }

    void characterNeverTakesTheFocus()
    {
        QLineEdit editor;
        editor.show();
        editor.activateWindow();
        editor.setFocus();
        QVERIFY(QTest::qWaitForWindowActive(&editor));

        AgentCharacter character(QStringLiteral("Lantern"), CharacterFile::read(QStringLiteral(LANTERN_PROGRAM_DIR "/CHARS/LANTERN.ACS")));
        const Qt::WindowFlags flags = character.window()->windowFlags();
        QVERIFY(flags.testFlag(Qt::FramelessWindowHint));
        QVERIFY(flags.testFlag(Qt::WindowStaysOnTopHint));
        QVERIFY(flags.testFlag(Qt::WindowDoesNotAcceptFocus));
        QVERIFY(character.window()->testAttribute(Qt::WA_TranslucentBackground));
        QVERIFY(character.balloon()->windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus));

        character.Show();
        character.Speak(QStringLiteral("どうぞ続けてください"));
        character.Activate();
        QTRY_VERIFY(character.balloon()->isVisible());
        QCOMPARE(QApplication::focusWidget(), &editor);
        QCOMPARE(QApplication::activeWindow(), &editor);
        character.StopAll();
    }

};

int main(int argc, char *argv[])
{
    if (!qEnvironmentVariableIsEmpty("DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "xcb");
    QApplication app(argc, argv);
    TestCharacterFocus test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_character_focus.moc"
