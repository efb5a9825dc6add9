// Draws and composes Lantern's skin: the wallpaper pictures, the five theme
// pictures, the button sounds and the background tune. Everything here is
// made from numbers; nothing is taken from elsewhere.
//
// Usage: make_skin SKIN_FOLDER

#include "app/TitleArtwork.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <QRandomGenerator>
#include <QtMath>

#include <cmath>
#include <cstdio>

namespace {

constexpr QSize PictureSize(1920, 1080);

// ---- Pictures -------------------------------------------------------------

struct Scene
{
    QColor skyTop, skyBottom;
    QColor sun;
    QList<QColor> hills; // far to near
    // clang-format off
    enum Extra { None, Blossoms, Waves, Leaves, Snow, Stars, Letters, Rain } extra = None;
    // clang-format on
    double sunX = 0.75, sunY = 0.25;
    quint32 seed = 1;
};

void drawHills(QPainter &p, const Scene &scene, QRandomGenerator &random)
{
    const int w = PictureSize.width(), h = PictureSize.height();
    for (int layer = 0; layer < scene.hills.size(); ++layer) {
        const double base = h * (0.55 + 0.12 * layer);
        const double amplitude = h * (0.08 - 0.015 * layer);
        const double phase = random.generateDouble() * 6.28;
        const double frequency = 1.5 + layer * 0.7;
        QPainterPath path(QPointF(0, h));
        for (int x = 0; x <= w; x += 8) {
            const double t = double(x) / w;
            path.lineTo(x, base - amplitude * std::sin(t * frequency * 3.1416 + phase) - amplitude * 0.35 * std::sin(t * frequency * 7.3 + phase * 2));
        }
        path.lineTo(w, h);
        path.closeSubpath();
        p.fillPath(path, scene.hills[layer]);
    }
}

void drawExtra(QPainter &p, const Scene &scene, QRandomGenerator &random)
{
    const int w = PictureSize.width(), h = PictureSize.height();
    p.setPen(Qt::NoPen);
    switch (scene.extra) {
    case Scene::None:
        break;
    case Scene::Blossoms:
        for (int i = 0; i < 160; ++i) {
            const QPointF c(random.bounded(w), random.bounded(h));
            const double r = 6 + random.bounded(10);
            p.setBrush(QColor(255, 190 + random.bounded(40), 210 + random.bounded(30), 200));
            for (int k = 0; k < 5; ++k) {
                const double a = k * 2 * M_PI / 5;
                p.drawEllipse(c + QPointF(std::cos(a) * r * 0.8, std::sin(a) * r * 0.8), r * 0.6, r * 0.6);
            }
        }
        break;
    case Scene::Waves:
        p.setPen(QPen(QColor(255, 255, 255, 120), 4));
        for (int row = 0; row < 14; ++row) {
            const double y = h * 0.72 + row * 24;
            QPainterPath wave(QPointF(0, y));
            for (int x = 0; x <= w; x += 10)
                wave.lineTo(x, y + 6 * std::sin(x / 40.0 + row));
            p.drawPath(wave);
        }
        break;
    case Scene::Leaves:
        for (int i = 0; i < 120; ++i) {
            p.save();
            p.translate(random.bounded(w), random.bounded(h));
            p.rotate(random.bounded(360));
            p.setBrush(QColor::fromHsv(10 + random.bounded(35), 200, 200 + random.bounded(55), 220));
            QPainterPath leaf(QPointF(0, -18));
            leaf.quadTo(16, 0, 0, 18);
            leaf.quadTo(-16, 0, 0, -18);
            p.drawPath(leaf);
            p.restore();
        }
        break;
    case Scene::Snow:
        for (int i = 0; i < 400; ++i) {
            p.setBrush(QColor(255, 255, 255, 150 + random.bounded(100)));
            const double r = 2 + random.bounded(6);
            p.drawEllipse(QPointF(random.bounded(w), random.bounded(h)), r, r);
        }
        break;
    case Scene::Stars:
        for (int i = 0; i < 300; ++i) {
            p.setBrush(QColor(255, 250, 220, 100 + random.bounded(155)));
            const double r = 1 + random.bounded(3);
            p.drawEllipse(QPointF(random.bounded(w), random.bounded(int(h * 0.6))), r, r);
        }
        break;
    case Scene::Letters:
        for (int i = 0; i < 24; ++i) {
            p.save();
            p.translate(random.bounded(w), random.bounded(int(h * 0.55)));
            p.rotate(random.bounded(40) - 20);
            p.setBrush(QColor(255, 255, 255, 200));
            p.drawRoundedRect(QRectF(-40, -26, 80, 52), 4, 4);
            p.setPen(QPen(QColor(120, 150, 200, 180), 3));
            p.drawLine(QPointF(-40, -26), QPointF(0, 4));
            p.drawLine(QPointF(40, -26), QPointF(0, 4));
            p.setPen(Qt::NoPen);
            p.restore();
        }
        break;
    case Scene::Rain:
        p.setPen(QPen(QColor(255, 255, 255, 90), 2));
        for (int i = 0; i < 300; ++i) {
            const QPointF a(random.bounded(w), random.bounded(h));
            p.drawLine(a, a + QPointF(-6, 30));
        }
        break;
    }
}

QImage drawScene(const Scene &scene)
{
    QImage image(PictureSize, QImage::Format_RGB32);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    QRandomGenerator random(scene.seed);

    QLinearGradient sky(0, 0, 0, PictureSize.height());
    sky.setColorAt(0.0, scene.skyTop);
    sky.setColorAt(0.7, scene.skyBottom);
    p.fillRect(image.rect(), sky);

    const QPointF sunCentre(PictureSize.width() * scene.sunX, PictureSize.height() * scene.sunY);
    QRadialGradient glow(sunCentre, 260);
    QColor halo = scene.sun;
    halo.setAlpha(120);
    glow.setColorAt(0.0, halo);
    glow.setColorAt(1.0, QColor(255, 255, 255, 0));
    p.setPen(Qt::NoPen);
    p.setBrush(glow);
    p.drawEllipse(sunCentre, 260, 260);
    p.setBrush(scene.sun);
    p.drawEllipse(sunCentre, 70, 70);

    // A few soft clouds.
    for (int i = 0; i < 5; ++i) {
        const QPointF c(random.bounded(PictureSize.width()), 80 + random.bounded(260));
        // One outline for the whole cloud, so overlaps do not show.
        QPainterPath cloud;
        for (int k = 0; k < 4; ++k) {
            QPainterPath puff;
            puff.addEllipse(c + QPointF(k * 50 - 75, (k % 2) * -20), 70, 40);
            cloud = cloud.united(puff);
        }
        p.fillPath(cloud, QColor(255, 255, 255, 90));
    }

    drawHills(p, scene, random);
    drawExtra(p, scene, random);
    return image;
}

bool savePicture(const QImage &image, const QString &path, const char *format)
{
    if (!image.save(path, format, 88)) {
        std::fprintf(stderr, "make_skin: cannot write %s\n", qPrintable(path));
        return false;
    }
    return true;
}

// ---- Sounds -----------------------------------------------------------------

void putLe(QByteArray &out, quint32 value, int bytes)
{
    for (int i = 0; i < bytes; ++i)
        out.append(char((value >> (8 * i)) & 0xff));
}

// A soft click: a few sine partials under a fast exponential decay.
bool writeClick(const QString &path, double frequency, double milliseconds, double brightness)
{
    const int rate = 44100;
    const int count = int(rate * milliseconds / 1000.0);
    QByteArray samples;
    for (int i = 0; i < count; ++i) {
        const double t = double(i) / rate;
        const double envelope = std::exp(-t * 1000.0 / (milliseconds / 4.0)) * std::min(1.0, i / 40.0);
        const double value = std::sin(2 * M_PI * frequency * t) + brightness * std::sin(2 * M_PI * frequency * 2.76 * t)
            + brightness * 0.5 * std::sin(2 * M_PI * frequency * 5.4 * t);
        putLe(samples, quint16(qint16(std::lround(value / (1 + 1.5 * brightness) * envelope * 9000))), 2);
    }
    QByteArray wav("RIFF");
    putLe(wav, 36 + samples.size(), 4);
    wav += "WAVEfmt ";
    putLe(wav, 16, 4);
    putLe(wav, 1, 2); // PCM
    putLe(wav, 1, 2); // mono
    putLe(wav, rate, 4);
    putLe(wav, rate * 2, 4);
    putLe(wav, 2, 2);
    putLe(wav, 16, 2);
    wav += "data";
    putLe(wav, samples.size(), 4);
    wav += samples;
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(wav) == wav.size();
}

// ---- The tune -------------------------------------------------------------

void putBe(QByteArray &out, quint32 value, int bytes)
{
    for (int i = bytes - 1; i >= 0; --i)
        out.append(char((value >> (8 * i)) & 0xff));
}

void putVarLen(QByteArray &out, quint32 value)
{
    QByteArray bytes;
    bytes.prepend(char(value & 0x7f));
    while (value >>= 7)
        bytes.prepend(char((value & 0x7f) | 0x80));
    out += bytes;
}

// A slow, gentle waltz in F major on a music box, with a soft string pad.
bool writeTune(const QString &path)
{
    const int beat = 480; // ticks per quarter note
    // Melody as (note, beats); 0 is a rest. Three beats to a bar.
    const QList<QPair<int, int>> melody = {
        // clang-format off
        {72, 2}, {69, 1}, {70, 2}, {67, 1}, {69, 3}, {65, 3},
        {67, 2}, {69, 1}, {70, 2}, {72, 1}, {74, 3}, {72, 3},
        {77, 2}, {74, 1}, {72, 2}, {70, 1}, {69, 2}, {67, 1}, {65, 3},
        {67, 2}, {69, 1}, {67, 2}, {64, 1}, {65, 6},
    };
    // clang-format on
    const QList<int> chords = {53, 58, 53, 60, 53, 58, 48, 53, 58, 53, 48, 53}; // one root per bar

    QByteArray track;
    auto event = [&](quint32 delta, std::initializer_list<int> bytes) {
        putVarLen(track, delta);
        for (int b : bytes)
            track.append(char(b));
    };
    // Tempo: 84 beats a minute.
    putVarLen(track, 0);
    track += QByteArray("\xff\x51\x03", 3);
    putBe(track, 60000000 / 84, 3);
    event(0, {0xC0, 10}); // music box
    event(0, {0xC1, 49}); // slow strings
    event(0, {0xB1, 7, 50});

    quint32 pending = 0;
    int bar = 0, beatInBar = 0;
    for (int repeat = 0; repeat < 2; ++repeat) {
        for (const auto &[note, beats] : melody) {
            if (beatInBar == 0) {
                const int root = chords.value(bar % chords.size());
                event(pending, {0x91, root, 40});
                event(0, {0x91, root + 7, 34});
                pending = 0;
            }
            event(pending, {0x90, note, 70});
            event(quint32(beats * beat), {0x80, note, 0});
            pending = 0;
            beatInBar += beats;
            while (beatInBar >= 3) {
                const int root = chords.value(bar % chords.size());
                event(0, {0x81, root, 0});
                event(0, {0x81, root + 7, 0});
                beatInBar -= 3;
                ++bar;
            }
        }
    }
    event(beat, {0xff, 0x2f, 0x00});

    QByteArray midi("MThd");
    putBe(midi, 6, 4);
    putBe(midi, 0, 2);
    putBe(midi, 1, 2);
    putBe(midi, beat, 2);
    midi += "MTrk";
    putBe(midi, track.size(), 4);
    midi += track;
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(midi) == midi.size();
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: make_skin SKIN_FOLDER\n");
        return 2;
    }
    const QDir skin(QString::fromLocal8Bit(argv[1]));
    QDir().mkpath(skin.filePath("CG"));
    bool ok = true;

    // The splash picture, drawn here so that the program only loads it.
    ok &= savePicture(TitleArtwork::draw(TitleArtwork::size()), skin.filePath(TitleArtwork::fileName()), "BMP");

    // The welcome picture: an evening with lanterns' warm light.
    ok &= savePicture(drawScene({QColor(0x2b, 0x3a, 0x67), QColor(0xf2, 0xa6, 0x5a), QColor(0xff, 0xe0, 0xa0), {QColor(0x6b, 0x5b, 0x95), QColor(0x4a, 0x3f, 0x6b), QColor(0x2f, 0x28, 0x45)}, Scene::Stars, 0.3, 0.55, 11}),
                      skin.filePath("WELCOME.BMP"), "BMP");

    // The five themes, stored under their half-width names.
    const QList<QPair<QString, Scene>> themes = {
        {QStringLiteral("ｳｪﾌﾞﾛｸﾞ"), {QColor(0x8e, 0xc5, 0xfc), QColor(0xe0, 0xf0, 0xff), QColor(0xff, 0xf4, 0xc2), {QColor(0xb8, 0xd8, 0xb0), QColor(0x8f, 0xc0, 0x8a)}, Scene::Letters, 0.8, 0.2, 21}},
        {QStringLiteral("ﾏｲﾅｽｲｵﾝ"), {QColor(0x5f, 0xa8, 0x9a), QColor(0xd8, 0xf0, 0xe4), QColor(0xf4, 0xff, 0xf0), {QColor(0x4f, 0x8f, 0x6f), QColor(0x2f, 0x6f, 0x52), QColor(0x1f, 0x4f, 0x3a)}, Scene::Rain, 0.7, 0.2, 22}},
        {QStringLiteral("ｵｰｶﾞﾆｯｸ"), {QColor(0xf5, 0xde, 0xb3), QColor(0xfa, 0xf3, 0xe0), QColor(0xff, 0xd8, 0x80), {QColor(0xc8, 0xb0, 0x70), QColor(0xa0, 0x8a, 0x50), QColor(0x7a, 0x6a, 0x3a)}, Scene::Leaves, 0.25, 0.3, 23}},
        {QStringLiteral("ｸｰﾙﾋﾞｽﾞ"), {QColor(0x4f, 0xb3, 0xe8), QColor(0xd6, 0xf2, 0xff), QColor(0xff, 0xff, 0xe8), {QColor(0x3a, 0x90, 0xc8), QColor(0x2a, 0x78, 0xb0)}, Scene::Waves, 0.6, 0.2, 24}},
        {QStringLiteral("ｾﾚﾌﾞﾘﾃｨ"), {QColor(0x3a, 0x1f, 0x5c), QColor(0xb0, 0x7a, 0xc0), QColor(0xff, 0xe6, 0x9a), {QColor(0x5a, 0x3a, 0x7a), QColor(0x40, 0x28, 0x5c)}, Scene::Stars, 0.5, 0.3, 25}},
    };
    for (const auto &[stem, scene] : themes)
        ok &= savePicture(drawScene(scene), skin.filePath("CG/" + stem + ".JPEG"), "JPEG");

    // Pictures for the rotations (three-letter extensions, so the listing
    // "*.???" finds them and not the themes).
    const QList<QPair<QString, Scene>> rotation = {
        {"SPRING.JPG", {QColor(0xa8, 0xd8, 0xf0), QColor(0xff, 0xee, 0xf4), QColor(0xff, 0xf6, 0xd0), {QColor(0xc6, 0xe2, 0xa8), QColor(0x9c, 0xcc, 0x84)}, Scene::Blossoms, 0.2, 0.2, 31}},
        {"SUMMER.JPG", {QColor(0x3d, 0x9b, 0xe9), QColor(0xc9, 0xec, 0xff), QColor(0xff, 0xfb, 0xd6), {QColor(0x2e, 0x86, 0xc1), QColor(0x1f, 0x6f, 0xa8)}, Scene::Waves, 0.8, 0.18, 32}},
        {"AUTUMN.JPG", {QColor(0xf0, 0xb2, 0x7a), QColor(0xff, 0xe8, 0xc8), QColor(0xff, 0xd0, 0x80), {QColor(0xc8, 0x6a, 0x3a), QColor(0xa0, 0x4a, 0x2a), QColor(0x78, 0x38, 0x22)}, Scene::Leaves, 0.3, 0.35, 33}},
        {"WINTER.JPG", {QColor(0x9f, 0xb8, 0xd8), QColor(0xf0, 0xf4, 0xfa), QColor(0xff, 0xff, 0xff), {QColor(0xe6, 0xee, 0xf6), QColor(0xd0, 0xdc, 0xea)}, Scene::Snow, 0.7, 0.3, 34}},
        {"MORNING.JPG", {QColor(0xff, 0xc8, 0xa0), QColor(0xff, 0xf2, 0xe0), QColor(0xff, 0xf0, 0xb0), {QColor(0xb8, 0xc8, 0x98), QColor(0x90, 0xa8, 0x78)}, Scene::None, 0.15, 0.45, 35}},
        {"NIGHT.JPG", {QColor(0x10, 0x18, 0x38), QColor(0x3a, 0x48, 0x78), QColor(0xf8, 0xf4, 0xd8), {QColor(0x26, 0x30, 0x50), QColor(0x1a, 0x22, 0x3a)}, Scene::Stars, 0.8, 0.2, 36}},
        {"MEADOW.PNG", {QColor(0x90, 0xd0, 0xf8), QColor(0xf0, 0xfa, 0xff), QColor(0xff, 0xf8, 0xd0), {QColor(0xa8, 0xd8, 0x78), QColor(0x80, 0xc0, 0x58), QColor(0x60, 0xa0, 0x40)}, Scene::None, 0.5, 0.2, 37}},
    };
    for (const auto &[name, scene] : rotation)
        ok &= savePicture(drawScene(scene), skin.filePath("CG/" + name), name.endsWith("PNG") ? "PNG" : "JPEG");

    // Button sounds: a wooden tap, a lighter tick, a soft pop.
    ok &= writeClick(skin.filePath("1.WAV"), 520, 110, 0.35);
    ok &= writeClick(skin.filePath("2.WAV"), 880, 70, 0.2);
    ok &= writeClick(skin.filePath("3.WAV"), 660, 60, 0.1);
    ok &= writeTune(skin.filePath("2.MIDI"));
    // The clock's half-hour beep: one clear, bell-like tone.
    ok &= writeClick(skin.filePath("BEEP.WAV"), 988, 600, 0.15);
    return ok ? 0 : 1;
}
