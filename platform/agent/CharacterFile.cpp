#include "platform/agent/CharacterFile.h"

#include <QBuffer>
#include <QImageReader>
#include <QtEndian>

#include <zlib.h>
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

// Checks every chunk of a PNG against its CRC without decoding the picture:
// a damaged file is refused at once, while decoding waits until a frame shows.
bool pngIsWhole(const QByteArray &png)
{
    static const QByteArray signature("\x89PNG\r\n\x1a\n", 8);
    if (!png.startsWith(signature))
        return false;
    qsizetype at = signature.size();
    while (at + 12 <= png.size()) {
        const auto *bytes = reinterpret_cast<const uchar *>(png.constData() + at);
        const quint32 length = qFromBigEndian<quint32>(bytes);
        if (length > quint32(png.size() - at - 12))
            return false;
        const quint32 stored = qFromBigEndian<quint32>(bytes + 8 + length);
        if (crc32(0, bytes + 4, length + 4) != stored)
            return false;
        if (png.mid(at + 4, 4) == "IEND")
            return true;
        at += 12 + length;
    }
    return false;
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
    QSize firstSize;
    for (quint32 i = 0; i < imageCount; ++i) {
        QByteArray png;
        in >> png;
        // Only the picture's header is read now; the rest when it is shown.
        QBuffer buffer(&png);
        buffer.open(QIODevice::ReadOnly);
        QImageReader reader(&buffer, "PNG");
        const QSize pictureSize = reader.size();
        if (in.status() != QDataStream::Ok || !pngIsWhole(png) || !reader.canRead() || !pictureSize.isValid()
            || pictureSize.width() > MaxSide || pictureSize.height() > MaxSide)
            throw damaged(path, QStringLiteral("picture %1 is damaged").arg(i));
        if (i == 0)
            firstSize = pictureSize;
        character.m_encoded.append(png);
    }

    const QJsonObject root = header.object();
    character.name = root.value(u"name").toString();
    character.description = root.value(u"description").toString();
    character.size = QSize(root.value(u"width").toInt(), root.value(u"height").toInt());
    if (character.size.width() <= 0 || character.size.height() <= 0
        || character.size.width() > MaxSide || character.size.height() > MaxSide)
        character.size = firstSize.boundedTo(QSize(MaxSide, MaxSide));

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
    root.insert(u"balloon", QJsonObject{{u"background"_qs, colourName(balloonBackground)}, {u"border"_qs, colourName(balloonBorder)}, {u"text"_qs, colourName(balloonText)}});
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

int CharacterFile::imageCount() const
{
    return m_encoded.isEmpty() ? int(images.size()) : int(m_encoded.size());
}

QImage CharacterFile::image(int index) const
{
    if (m_encoded.isEmpty())
        return images.value(index);
    if (index < 0 || index >= m_encoded.size())
        return QImage();
    auto found = m_decoded.constFind(index);
    if (found != m_decoded.constEnd())
        return found.value();
    QImage decoded;
    // A picture whose body turns out damaged shows as nothing.
    if (decoded.loadFromData(m_encoded.at(index), "PNG"))
        decoded = decoded.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    m_decoded.insert(index, decoded);
    return decoded;
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
