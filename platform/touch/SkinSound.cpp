#include "platform/touch/SkinSound.h"

#include "platform/RuntimeLog.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QHash>
#include <QSet>
#include <QSoundEffect>
#include <QUrl>

namespace {

QHash<QString, QSoundEffect *> &openSounds()
{
    static QHash<QString, QSoundEffect *> sounds;
    return sounds;
}

} // namespace

bool SkinSound::play(const QString &path)
{
    if (path.isEmpty())
        return false;
    if (!QFileInfo(path).isFile()) {
        // Say it once per file; a missing sound is clicked again and again.
        static QSet<QString> reported;
        if (!reported.contains(path)) {
            reported.insert(path);
            RuntimeLog::note("SkinSound::play", QStringLiteral("no sound file %1").arg(path));
        }
        return false;
    }
    QSoundEffect *&effect = openSounds()[path];
    if (!effect) {
        effect = new QSoundEffect(QCoreApplication::instance());
        effect->setSource(QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath()));
    }
    if (effect->status() == QSoundEffect::Error)
        return false;
    // A sound that is still loading starts as soon as it is ready.
    effect->play();
    return true;
}
