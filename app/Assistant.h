#pragma once

#include <QString>
#include <QStringList>

class AgentCharacter;
class AgentControl;

// The assistant character routine: the main window hands it short command
// texts ("On", "Hello!", "What's the date today?", ...) and it loads, shows,
// moves and speaks one of the installed characters. Nothing it does is ever
// reported to the user as an error; a step that fails is noted in the runtime
// log and the next step runs.
class Assistant
{
public:
    // Carries out one command. "On" while a character is loaded keeps it.
    // The command is first put into proper case, and
    // a text that is spoken may be rewritten with pauses; both changes are
    // written back into the caller's variable.
    static void Character(QString &command);

    // The folders searched for character files: the program's own "CHARS"
    // folder, then WinDir + "/MSAGENT/CHARS" when WinDir is set.
    static QStringList characterFolders();
    // Every "*.ACS" file of those folders, each folder in directory order.
    static QStringList characterFiles();

    // The text with a one-second pause between runs of different kinds of
    // script (Latin, hiragana, katakana, punctuation, kanji), so that the
    // Japanese voice reads each run on its own.
    static QString speechText(const QString &text);
    // Whether the mode identifier names one of the two Japanese voices.
    static bool isJapaneseVoice(const QString &ttsModeId);

    // The loaded character's identifier, "" before the first "On".
    static QString characterId();
    // The control, null until "On" creates it.
    static AgentControl *control();
    // The loaded character, or null.
    static AgentCharacter *character();

    static QString greeting();
    static QString farewell();

    // Lets go of the control and its characters (when the main window goes).
    static void release();

private:
    static void load();
    static void greet(AgentCharacter &character);
    static void sayGoodbye(AgentCharacter &character);
    static void tellDateAndTime(AgentCharacter &character);
    static void moveAndGesture(AgentCharacter &character, const QString &command);
    static void speak(AgentCharacter &character, QString &text);
    static void moveHome(AgentCharacter &character);
    static void rest(AgentCharacter &character);
};
