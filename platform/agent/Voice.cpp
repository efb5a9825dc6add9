#include "platform/agent/Voice.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>

namespace {

const QString DictionaryFolder = QStringLiteral("/var/lib/mecab/dic/open-jtalk/naist-jdic");
const QString VoiceFolder = QStringLiteral("/usr/share/hts-voice");
const QString PreferredVoice = QStringLiteral("nitech-jp-atr503-m001/nitech_jp_atr503_m001.htsvoice");

// The named voice, or any other HTS voice that is installed.
QString htsVoiceFile()
{
    const QString preferred = VoiceFolder + u'/' + PreferredVoice;
    if (QFileInfo::exists(preferred))
        return preferred;
    const QDir folder(VoiceFolder);
    for (const QString &sub : folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
        const QDir voiceDir(folder.filePath(sub));
        const QStringList voices = voiceDir.entryList({QStringLiteral("*.htsvoice")}, QDir::Files, QDir::Name);
        if (!voices.isEmpty())
            return voiceDir.filePath(voices.first());
    }
    return QString();
}

} // namespace

const QStringList &Voice::japaneseModeIds()
{
    static const QStringList ids{QStringLiteral("{A778E061-A936-11D1-B17B-0020AFED142E}"),
                                 QStringLiteral("{A778E060-A936-11D1-B17B-0020AFED142E}")};
    return ids;
}

bool Voice::isInstalled(const QString &ttsModeId)
{
    return japaneseModeIds().contains(ttsModeId.trimmed(), Qt::CaseInsensitive)
        && installedEngine() != Engine::None;
}

Voice::Engine Voice::installedEngine()
{
    if (!QStandardPaths::findExecutable(QStringLiteral("open_jtalk")).isEmpty()
        && QFileInfo(DictionaryFolder + QStringLiteral("/sys.dic")).exists() && !htsVoiceFile().isEmpty())
        return Engine::OpenJTalk;
    if (!QStandardPaths::findExecutable(QStringLiteral("espeak-ng")).isEmpty())
        return Engine::EspeakNg;
    return Engine::None;
}

QString Voice::program(Engine engine)
{
    switch (engine) {
    case Engine::OpenJTalk:
        return QStandardPaths::findExecutable(QStringLiteral("open_jtalk"));
    case Engine::EspeakNg:
        return QStandardPaths::findExecutable(QStringLiteral("espeak-ng"));
    case Engine::None:
        break;
    }
    return QString();
}

QStringList Voice::arguments(Engine engine, const QString &outputPath)
{
    switch (engine) {
    case Engine::OpenJTalk:
        return {QStringLiteral("-x"), DictionaryFolder, QStringLiteral("-m"), htsVoiceFile(),
                QStringLiteral("-ow"), outputPath};
    case Engine::EspeakNg:
        return {QStringLiteral("-v"), QStringLiteral("ja"), QStringLiteral("-w"), outputPath, QStringLiteral("--stdin")};
    case Engine::None:
        break;
    }
    return {};
}

QString Voice::reading(const QString &text)
{
    static const QRegularExpression clock(QStringLiteral(R"((?<![0-9０-９])([0-9]{1,2})[:：]([0-9]{2})(?![0-9０-９]))"));
    QString result;
    qsizetype pos = 0;
    for (const QRegularExpressionMatch &match : clock.globalMatch(text)) {
        result += text.mid(pos, match.capturedStart() - pos);
        const int hour = match.captured(1).toInt();
        const int minute = match.captured(2).toInt();
        result += minute == 0 ? QStringLiteral("%1時").arg(hour) : QStringLiteral("%1時%2分").arg(hour).arg(minute);
        pos = match.capturedEnd();
    }
    return result + text.mid(pos);
}
