#include "platform/agent/CharacterFile.h"
#include "platform/agent/AgentError.h"

#include <QBuffer>
#include <QDataStream>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

namespace {

// Bounds that keep a damaged file from asking for absurd amounts of memory.
constexpr quint32 MaxImages = 4096;
constexpr int MaxSide = 2048;
constexpr int MinDuration = 10;
constexpr int MaxDuration = 60000;

VbError damaged(const QString &path, const QString &why)
{
    return AgentError::characterFile(path, why);
}

template<typename Map>
auto findIgnoringCase(const Map &map, const QString &name)
{
    for (auto it = map.cbegin(); it != map.cend(); ++it) {
        if (it.key().compare(name, Qt::CaseInsensitive) == 0)
            return it;
    }
    return map.cend();
}

QString colourName(const QColor &colour)
{
    return colour.name(QColor::HexRgb);
}

QColor colourOr(const QJsonValue &value, const QColor &fallback)
{
    const QColor colour = QColor::fromString(value.toString());
    return colour.isValid() ? colour : fallback;
}

} // namespace

CharacterFile CharacterFile::read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw damaged(path, file.errorString());

    QDataStream in(&file);
    in.setVersion(QDataStream::Qt_6_0);
    quint32 magic = 0;
    quint16 version = 0;
    in >> magic >> version;
    if (in.status() != QDataStream::Ok || magic != Magic)
        throw damaged(path, QStringLiteral("not a character file"));
    if (version != Version)
        throw damaged(path, QStringLiteral("unknown version %1").arg(version));

    QByteArray headerBytes;
    in >> headerBytes;
    QJsonParseError parseError;
    const QJsonDocument header = QJsonDocument::fromJson(headerBytes, &parseError);
    if (in.status() != QDataStream::Ok || !header.isObject())
        throw damaged(path, QStringLiteral("bad header: %1").arg(parseError.errorString()));

    quint32 imageCount = 0;
    in >> imageCount;
    if (in.status() != QDataStream::Ok || imageCount == 0 || imageCount > MaxImages)
        throw damaged(path, QStringLiteral("bad picture count"));

    CharacterFile character;
    for (quint32 i = 0; i < imageCount; ++i) {
        QByteArray png;
        in >> png;
        QImage image;
        if (in.status() != QDataStream::Ok || !image.loadFromData(png, "PNG"))
            throw damaged(path, QStringLiteral("picture %1 is damaged").arg(i));
        character.images.append(image.convertToFormat(QImage::Format_ARGB32_Premultiplied));
    }

    const QJsonObject root = header.object();
    character.name = root.value(u"name").toString();
    character.description = root.value(u"description").toString();
    character.size = QSize(root.value(u"width").toInt(), root.value(u"height").toInt());
    if (character.size.width() <= 0 || character.size.height() <= 0
        || character.size.width() > MaxSide || character.size.height() > MaxSide)
        character.size = character.images.first().size().boundedTo(QSize(MaxSide, MaxSide));

    const QJsonObject balloon = root.value(u"balloon").toObject();
    character.balloonBackground = colourOr(balloon.value(u"background"), character.balloonBackground);
    character.balloonBorder = colourOr(balloon.value(u"border"), character.balloonBorder);
    character.balloonText = colourOr(balloon.value(u"text"), character.balloonText);

    const QJsonObject animations = root.value(u"animations").toObject();
    for (auto it = animations.begin(); it != animations.end(); ++it) {
        QList<CharacterFrame> frames;
        for (const QJsonValue &step : it.value().toArray()) {
            const QJsonArray pair = step.toArray();
            const int image = pair.at(0).toInt(-1);
            if (image < 0 || image >= int(imageCount))
                throw damaged(path, QStringLiteral("animation %1 shows a missing picture").arg(it.key()));
            frames.append({image, std::clamp(pair.at(1).toInt(100), MinDuration, MaxDuration)});
        }
        if (!frames.isEmpty())
            character.animations.insert(it.key(), frames);
    }
    if (character.animations.isEmpty())
        throw damaged(path, QStringLiteral("no animations"));

    const QJsonObject states = root.value(u"states").toObject();
    for (auto it = states.begin(); it != states.end(); ++it) {
        QStringList names;
        for (const QJsonValue &name : it.value().toArray()) {
            if (character.hasAnimation(name.toString()))
                names.append(name.toString());
        }
        if (!names.isEmpty())
            character.states.insert(it.key(), names);
    }
    return character;
}

bool CharacterFile::write(const QString &path) const
{
    QJsonObject root;
    root.insert(u"name", name);
    root.insert(u"description", description);
    root.insert(u"width", size.width());
    root.insert(u"height", size.height());
    root.insert(u"balloon", QJsonObject{{u"background"_qs, colourName(balloonBackground)},
                                        {u"border"_qs, colourName(balloonBorder)},
                                        {u"text"_qs, colourName(balloonText)}});
    QJsonObject animationObject;
    for (auto it = animations.cbegin(); it != animations.cend(); ++it) {
        QJsonArray frames;
        for (const CharacterFrame &frame : it.value())
            frames.append(QJsonArray{frame.image, frame.duration});
        animationObject.insert(it.key(), frames);
    }
    root.insert(u"animations", animationObject);
    QJsonObject stateObject;
    for (auto it = states.cbegin(); it != states.cend(); ++it)
        stateObject.insert(it.key(), QJsonArray::fromStringList(it.value()));
    root.insert(u"states", stateObject);

    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    QDataStream out(&file);
    out.setVersion(QDataStream::Qt_6_0);
    out << Magic << Version << QJsonDocument(root).toJson(QJsonDocument::Indented) << quint32(images.size());
    for (const QImage &image : images) {
        QByteArray png;
        QBuffer buffer(&png);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, "PNG");
        out << png;
    }
    return out.status() == QDataStream::Ok && file.commit();
}

QList<CharacterFrame> CharacterFile::animation(const QString &name) const
{
    const auto it = findIgnoringCase(animations, name.trimmed());
    return it == animations.cend() ? QList<CharacterFrame>() : it.value();
}

bool CharacterFile::hasAnimation(const QString &name) const
{
    return findIgnoringCase(animations, name.trimmed()) != animations.cend();
}

QStringList CharacterFile::state(const QString &name) const
{
    const auto it = findIgnoringCase(states, name.trimmed());
    return it == states.cend() ? QStringList() : it.value();
}

bool CharacterFile::hasState(const QString &name) const
{
    return findIgnoringCase(states, name.trimmed()) != states.cend();
}
