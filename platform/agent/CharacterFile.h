#pragma once

#include <QColor>
#include <QImage>
#include <QHash>
#include <QList>
#include <QMap>
#include <QSize>
#include <QString>
#include <QStringList>

// One step of an animation: which picture to show and for how long.
struct CharacterFrame
{
    int image = 0;
    int duration = 100; // milliseconds
};

// A character as it is stored in an "ACS" file of ours: its pictures, its
// named animations (lists of frames) and its states (names that stand for a
// set of animations, such as "Speaking" or "Moving"). Names are looked up with
// letter case ignored, as the original control does. The layout of the file
// is described in docs/character-format.md.
class CharacterFile
{
public:
    static constexpr quint32 Magic = 0x4C414353; // "LACS"
    static constexpr quint16 Version = 1;

    QString name;
    QString description;
    QSize size;
    QColor balloonBackground = QColor(0xFF, 0xFB, 0xEE);
    QColor balloonBorder = QColor(0xC9, 0xA8, 0x6A);
    QColor balloonText = QColor(0x4A, 0x36, 0x22);
    // The pictures of a character being built, in the order animations name
    // them; a character read from a file keeps its pictures as PNG instead and
    // decodes each on first use, so that loading never holds up the window.
    QList<QImage> images;
    QMap<QString, QList<CharacterFrame>> animations;
    QMap<QString, QStringList> states;

    // Reads a character; a missing, damaged or foreign file fails with a
    // VbError and never half-loads.
    static CharacterFile read(const QString &path);

    int imageCount() const;
    QImage image(int index) const;
    bool write(const QString &path) const;

    // The animation or state with this name (letter case ignored); an empty
    // result when the character has none.
    QList<CharacterFrame> animation(const QString &name) const;
    bool hasAnimation(const QString &name) const;
    QStringList state(const QString &name) const;
    bool hasState(const QString &name) const;

private:
    QList<QByteArray> m_encoded;
    mutable QHash<int, QImage> m_decoded;
};
