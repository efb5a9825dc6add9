#include "app/Assistant.h"
#include "platform/vb/VbLike.h"
#include "app/Globals.h"
#include "platform/CodePage932.h"
#include "platform/ErrorTrap.h"
#include "platform/RuntimeLog.h"
#include "platform/agent/AgentCharacter.h"
#include "platform/agent/AgentControl.h"
#include "platform/vb/VbFormat.h"
#include "platform/vb/VbRandom.h"
#include "platform/vb/VbStrConv.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QGuiApplication>
#include <QScreen>

namespace {

// Module state, kept for the whole run.
QString characterIdentifier;
AgentControl *agentControl = nullptr;

constexpr int Japanese = 1041;
const QString Pause = QStringLiteral("\\Pau=1000\\");

// The kinds of script that the voice reads apart, by code page 932 code.
// clang-format off
enum ScriptClass { NoClass = 0, Latin = 1, Hiragana = 2, Katakana = 3, Punctuation = 4, Kanji = 5 };
// clang-format on

int scriptClass(unsigned code, int previous)
{
    if ((code >= 32 && code <= 126) || (code >= 161 && code <= 223) || (code >= 0x824F && code <= 0x829E))
        return Latin;
    if (code >= 0x829F && code <= 0x82F1)
        return Hiragana;
    if ((code >= 0x8340 && code <= 0x8396) || code == 0x815B)
        return Katakana;
    if (code == 0x8141 || code == 0x8142 || code == 0x8145 || code == 0x8175 || code == 0x8176)
        return Punctuation;
    if ((code >= 0x889F && code <= 0x9872) || (code >= 0x989F && code <= 0x9FFC) || (code >= 0xE040 && code <= 0xEAA4))
        return Kanji;
    return previous;
}

unsigned codePage932Code(const QString &character)
{
    const QByteArray bytes = CodePage932::encode(character);
    if (bytes.size() >= 2)
        return unsigned(quint8(bytes.at(0))) * 256 + quint8(bytes.at(1));
    return bytes.isEmpty() ? 0 : quint8(bytes.at(0));
}

QRect screenArea()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen ? screen->availableGeometry() : QRect(0, 0, 1920, 1080);
}

// Runs one step of the routine; a failure is noted and the routine goes on.
template<typename Step>
void step(const char *where, Step &&action)
{
    ErrorTrap::run(where, std::forward<Step>(action));
}

} // namespace

void Assistant::Character(QString &command)
{
    command = VbStrConv::properCase(command);
    if (command.isEmpty())
        return;
    if (command == u"On") {
        load();
        return;
    }
    if (command == u"Off") {
        if (!agentControl)
            return;
        step("Character: stop", [] { agentControl->Characters().Item(characterIdentifier).StopAll(); });
        step("Character: unload", [] { agentControl->Characters().Unload(characterIdentifier); });
        step("Character: disconnect", [] { agentControl->setConnected(false); });
        return;
    }

    AgentCharacter *loaded = character();
    if (!loaded) {
        RuntimeLog::note("Character", QStringLiteral("no character for \"%1\"").arg(command));
        return;
    }
    AgentCharacter &c = *loaded;
    bool resting = true;
    if (command == u"Hello!") {
        greet(c);
    } else if (command == u"Bye!") {
        sayGoodbye(c);
    } else if (command == u"What's The Date Today?" || command == u"What Time Is It Now?") {
        tellDateAndTime(c);
    } else if (command == u"Thank You." || command == u"Sorry." || command == u"Let's Go Home, Please.") {
        moveAndGesture(c, command);
        resting = false;
    } else {
        speak(c, command);
    }

    // After moving about the character goes home to the top left corner;
    // after speaking it comes to rest where it stands.
    step("Character: activate", [&] { c.Activate(); });
    if (resting)
        rest(c);
    else
        moveHome(c);
}

void Assistant::load()
{
    // The main window passes "On" again when it reloads: the character on
    // the screen stays, rather than a second one being loaded beside it.
    if (character())
        return;
    const QStringList files = characterFiles();
    if (files.isEmpty()) {
        RuntimeLog::note("Character: on", QStringLiteral("no character files installed"));
        return;
    }
    VbRandom::randomizeTimer();
    const int entry = int(double(files.size()) * double(VbRandom::rnd()) + 1.0);
    const QString file = files.at(std::clamp(entry, 1, int(files.size())) - 1);
    const QString name = QFileInfo(file).fileName();
    characterIdentifier = name.left(name.indexOf(u'.'));

    if (!agentControl)
        agentControl = new AgentControl;
    agentControl->setConnected(true);
    step("Character: load", [&] { agentControl->Characters().Load(characterIdentifier, file); });
    AgentCharacter *c = character();
    if (!c)
        return;
    step("Character: language", [&] { c->setLanguageID(Japanese); });
    // Of the two Japanese voices the second wins when both are installed.
    step("Character: voice", [&] { c->setTTSModeID(QStringLiteral("{A778E061-A936-11D1-B17B-0020AFED142E}")); });
    step("Character: voice", [&] { c->setTTSModeID(QStringLiteral("{A778E060-A936-11D1-B17B-0020AFED142E}")); });
}

void Assistant::greet(AgentCharacter &c)
{
    step("Character: greet", [&] { c.StopAll(); });
    step("Character: greet", [&] { c.Get(QStringLiteral("State"), QStringLiteral("Showing")); });
    step("Character: greet", [&] { c.Show(); });
    step("Character: greet", [&] { c.Get(QStringLiteral("Animation"), QStringLiteral("Greet")); });
    step("Character: greet", [&] { c.Play(QStringLiteral("Greet")); });
    step("Character: greet", [&] { c.Get(QStringLiteral("State"), QStringLiteral("Speaking")); });
    step("Character: greet", [&] { c.Speak(greeting()); });
}

void Assistant::sayGoodbye(AgentCharacter &c)
{
    step("Character: bye", [&] { c.StopAll(); });
    step("Character: bye", [&] { c.Get(QStringLiteral("Animation"), QStringLiteral("Acknowledge")); });
    step("Character: bye", [&] { c.Play(QStringLiteral("Acknowledge")); });
    step("Character: bye", [&] { c.Get(QStringLiteral("State"), QStringLiteral("Speaking")); });
    step("Character: bye", [&] { c.Speak(farewell()); });
    step("Character: bye", [&] { c.Get(QStringLiteral("State"), QStringLiteral("Hiding")); });
    step("Character: bye", [&] { c.Hide(); });
}

void Assistant::tellDateAndTime(AgentCharacter &c)
{
    const QDateTime now = QDateTime::currentDateTime();
    const QString text = VbFormat::dateTime(now, QStringLiteral("Long Date")) + u' '
        + VbFormat::dateTime(now, QStringLiteral("Short Time"));
    step("Character: date", [&] { c.Get(QStringLiteral("State"), QStringLiteral("Speaking")); });
    step("Character: date", [&] { c.Speak(text); });
}

void Assistant::moveAndGesture(AgentCharacter &c, const QString &command)
{
    // Thanks: to the middle of the screen, bowing towards the user.
    // Sorry: to the lower left corner, turning to the rest of the screen.
    // Going home: to the upper right corner, pointing at home in the upper left.
    const QRect area = screenArea();
    const int margin = 40;
    QPoint place;
    QPoint point;
    if (command == u"Thank You.") {
        place = area.center() - QPoint(c.Width() / 2, c.Height() / 2);
        point = QPoint(area.center().x(), area.bottom());
    } else if (command == u"Sorry.") {
        place = QPoint(area.left() + margin, area.bottom() - c.Height() - margin);
        point = QPoint(area.right(), area.bottom() - c.Height() / 2);
    } else {
        place = QPoint(area.right() - c.Width() - margin, area.top() + margin);
        point = QPoint(0, 0);
    }
    step("Character: move", [&] { c.Stop(); });
    step("Character: move", [&] { c.Get(QStringLiteral("State"), QStringLiteral("Moving")); });
    step("Character: move", [&] { c.MoveTo(place.x(), place.y()); });
    step("Character: move", [&] { c.Get(QStringLiteral("State"), QStringLiteral("Gesturing")); });
    step("Character: move", [&] { c.GestureAt(point.x(), point.y()); });
}

void Assistant::speak(AgentCharacter &c, QString &text)
{
    bool japanese = false;
    step("Character: speak", [&] { japanese = isJapaneseVoice(c.TTSModeID()); });
    if (japanese)
        text = speechText(text);
    step("Character: speak", [&] { c.Get(QStringLiteral("State"), QStringLiteral("Speaking")); });
    step("Character: speak", [&] { c.Speak(text); });
}

void Assistant::moveHome(AgentCharacter &c)
{
    step("Character: home", [&] { c.MoveTo(0, 0); });
}

void Assistant::rest(AgentCharacter &c)
{
    static const QStringList poses{QStringLiteral("RestPose"), QStringLiteral("Blink")};
    step("Character: rest", [&] { c.Get(QStringLiteral("Animation"), QStringLiteral("RestPose,Blink")); });
    const int entry = int(2.0f * VbRandom::rnd() + 1.0f); // Fix of a positive number
    step("Character: rest", [&] { c.Play(poses.at(std::clamp(entry, 1, 2) - 1)); });
    step("Character: rest", [&] { c.Get(QStringLiteral("State"), QStringLiteral("Idling,Listening,Hearing")); });
}

QStringList Assistant::characterFolders()
{
    QStringList folders;
    if (QCoreApplication::instance())
        folders.append(QCoreApplication::applicationDirPath() + QStringLiteral("/CHARS"));
    if (!Globals::WinDir.isEmpty())
        folders.append(Globals::WinDir + QStringLiteral("/MSAGENT/CHARS"));
    return folders;
}

QStringList Assistant::characterFiles()
{
    QStringList files;
    for (const QString &folder : characterFolders()) {
        const QDir dir(folder);
        // Windows matches "*.ACS" whatever the letter case of the name.
        for (const QString &name : dir.entryList({QStringLiteral("*.ACS")}, QDir::Files, QDir::Unsorted))
            files.append(dir.filePath(name));
    }
    return files;
}

QString Assistant::speechText(const QString &text)
{
    QString spoken;
    int previous = NoClass;
    for (qsizetype i = 0; i < text.size(); ++i) {
        // A character outside the basic plane travels as a pair and is one character here.
        const qsizetype length = text.at(i).isHighSurrogate() && i + 1 < text.size() ? 2 : 1;
        QString character = text.mid(i, length);
        i += length - 1;
        if (character == u"\t" || character == u"\r" || character == u"\n")
            character = QStringLiteral(" ");

        const int current = scriptClass(codePage932Code(character), previous);
        if (current == previous)
            spoken += character;
        else if (current == Punctuation)
            spoken += character + Pause;
        else
            spoken += Pause + character;
        previous = current;
    }
    return spoken;
}

bool Assistant::isJapaneseVoice(const QString &ttsModeId)
{
    // Both Japanese voices, in either letter case.
    return VbLike::match(ttsModeId,
                         QStringLiteral("{[Aa]778[Ee]06?-[Aa]936-11[Dd]1-[Bb]17[Bb]-0020[Aa][Ff][Ee][Dd]142[Ee]}"));
}

QString Assistant::characterId()
{
    return characterIdentifier;
}

AgentControl *Assistant::control()
{
    return agentControl;
}

AgentCharacter *Assistant::character()
{
    if (!agentControl || !agentControl->Connected() || characterIdentifier.isEmpty())
        return nullptr;
    return agentControl->Characters().find(characterIdentifier);
}

QString Assistant::greeting()
{
    return QStringLiteral("こんにちは。今日もよろしくお願いします。");
}

QString Assistant::farewell()
{
    return QStringLiteral("さようなら。また会いましょう。");
}

void Assistant::release()
{
    delete agentControl;
    agentControl = nullptr;
    characterIdentifier.clear();
}
