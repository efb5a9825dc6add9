// Shows one character file greeting, the way the program shows it, and saves
// a picture of it: the character and its balloon as they stand on the screen,
// over a plain desk-coloured background. Used to look at new characters and by
// the screenshot test.
//
//   character_preview FILE.ACS OUTPUT.png [COMMAND]
//
// COMMAND defaults to "Hello!"; the picture is taken while the character speaks.
// Beside it, OUTPUT-screen.png shows the same place of the screen as the
// window system has it (without a compositor, see-through parts look black).

#include "app/Assistant.h"
#include "app/Globals.h"
#include "platform/agent/AgentCharacter.h"
#include "platform/agent/CharacterWindow.h"
#include "platform/agent/SpeechBalloon.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPainter>
#include <QScreen>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>

namespace {

QImage composeShot(AgentCharacter &character)
{
    QWidget *window = character.window();
    QWidget *balloon = character.balloon();
    QRect area = window->geometry();
    if (balloon->isVisible())
        area = area.united(balloon->geometry());
    area.adjust(-24, -24, 24, 24);

    QImage shot(area.size(), QImage::Format_ARGB32_Premultiplied);
    shot.fill(QColor(0x6C, 0x8E, 0xA8));
    QPainter painter(&shot);
    if (balloon->isVisible())
        painter.drawPixmap(balloon->pos() - area.topLeft(), balloon->grab());
    painter.drawPixmap(window->pos() - area.topLeft(), window->grab());
    return shot;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    if (argc < 3) {
        std::fprintf(stderr, "usage: character_preview FILE.ACS OUTPUT.png [COMMAND]\n");
        return 2;
    }
    const QString file = QFileInfo(QString::fromLocal8Bit(argv[1])).absoluteFilePath();
    const QString output = QString::fromLocal8Bit(argv[2]);
    QString command = argc > 3 ? QString::fromLocal8Bit(argv[3]) : QStringLiteral("Hello!");

    // A Windows folder of our own that holds only this character.
    QTemporaryDir windows;
    QDir().mkpath(windows.filePath(QStringLiteral("MSAGENT/CHARS")));
    if (!QFile::copy(file, windows.filePath(QStringLiteral("MSAGENT/CHARS/") + QFileInfo(file).fileName()))) {
        std::fprintf(stderr, "character_preview: cannot read %s\n", argv[1]);
        return 1;
    }
    Globals::WinDir = windows.path();

    QString on = QStringLiteral("On");
    Assistant::Character(on);
    AgentCharacter *character = Assistant::character();
    if (!character) {
        std::fprintf(stderr, "character_preview: the character did not load\n");
        return 1;
    }

    int status = 1;
    QObject::connect(character, &AgentCharacter::requestStarted, &app, [&](const QString &request) {
        if (!request.startsWith(QStringLiteral("Speak ")))
            return;
        // Half a second into the speech: the balloon is up and the mouth moves.
        QTimer::singleShot(500, &app, [&] {
            const QImage shot = composeShot(*character);
            status = shot.save(output) ? 0 : 1;
            const QRect area = character->window()->geometry().united(character->balloon()->geometry());
            if (QScreen *screen = QGuiApplication::primaryScreen()) {
                QString screenFile = output;
                screenFile.insert(screenFile.lastIndexOf(u'.'), QStringLiteral("-screen"));
                screen->grabWindow(0, area.x(), area.y(), area.width(), area.height()).save(screenFile);
            }
            const QRect w = character->window()->geometry();
            const QRect b = character->balloon()->geometry();
            std::printf("character %s visible %d at %d,%d %dx%d\n", qPrintable(Assistant::characterId()),
                        int(character->Visible()), w.x(), w.y(), w.width(), w.height());
            std::printf("balloon visible %d at %d,%d %dx%d: %s\n", int(character->balloon()->isVisible()),
                        b.x(), b.y(), b.width(), b.height(), qPrintable(character->balloon()->text()));
            std::fflush(stdout);
            QString off = QStringLiteral("Off");
            Assistant::Character(off);
            app.quit();
        });
    });
    QTimer::singleShot(30000, &app, [&] {
        std::fprintf(stderr, "character_preview: the character never spoke\n");
        app.exit(1);
    });
    Assistant::Character(command);
    app.exec();
    Assistant::release();
    return status;
}
