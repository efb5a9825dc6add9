#pragma once

#include "CharacterArtist.h"
#include "platform/agent/CharacterFile.h"

#include <QList>
#include <QPair>

// Turns an artist into a character file: the same set of animations for
// every character (everything the assistant routine and the engine ask
// for), each frame drawn by the artist, identical pictures stored once.
class CharacterBuilder
{
public:
    explicit CharacterBuilder(const CharacterArtist &artist);

    CharacterFile build();

private:
    using Step = QPair<Pose, int>; // a pose and how long it shows, in ms

    void add(const QString &name, const QList<Step> &steps);
    int imageFor(const Pose &pose);

    const CharacterArtist &m_artist;
    CharacterFile m_file;
};
