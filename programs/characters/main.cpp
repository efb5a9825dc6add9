// Draws the program's own assistant characters and writes them as character
// files into the folder given on the command line (the program's CHARS folder).

#include "CharacterBuilder.h"
#include "LanternArtist.h"
#include "OwlArtist.h"

#include <QDir>
#include <QGuiApplication>

#include <cstdio>
#include <memory>
#include <vector>

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: make_characters OUTPUT_FOLDER\n");
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    if (!folder.mkpath(QStringLiteral("."))) {
        std::fprintf(stderr, "make_characters: cannot create %s\n", argv[1]);
        return 1;
    }

    std::vector<std::unique_ptr<CharacterArtist>> artists;
    artists.push_back(std::make_unique<LanternArtist>());
    artists.push_back(std::make_unique<OwlArtist>());
    for (const auto &artist : artists) {
        const CharacterFile character = CharacterBuilder(*artist).build();
        const QString path = folder.filePath(artist->fileName());
        if (!character.write(path)) {
            std::fprintf(stderr, "make_characters: cannot write %s\n", qPrintable(path));
            return 1;
        }
    }
    return 0;
}
