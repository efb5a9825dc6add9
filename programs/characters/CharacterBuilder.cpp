#include "CharacterBuilder.h"

#include <QPainter>

namespace {

Pose rest()
{
    return Pose();
}

// Poses in between two others, for smooth movement.
Pose blend(const Pose &a, const Pose &b, double t)
{
    auto mix = [t](double x, double y) { return x + (y - x) * t; };
    Pose p;
    p.eyes = mix(a.eyes, b.eyes);
    p.happyEyes = t < 0.5 ? a.happyEyes : b.happyEyes;
    p.lookX = mix(a.lookX, b.lookX);
    p.lookY = mix(a.lookY, b.lookY);
    p.mouth = mix(a.mouth, b.mouth);
    p.leftArm = mix(a.leftArm, b.leftArm);
    p.rightArm = mix(a.rightArm, b.rightArm);
    p.tilt = mix(a.tilt, b.tilt);
    p.headTilt = mix(a.headTilt, b.headTilt);
    p.bob = mix(a.bob, b.bob);
    p.bow = mix(a.bow, b.bow);
    p.scale = mix(a.scale, b.scale);
    p.opacity = mix(a.opacity, b.opacity);
    p.glow = mix(a.glow, b.glow);
    return p;
}

// `count` steps from a to b (b included, a not), each shown for `ms`.
QList<QPair<Pose, int>> tween(const Pose &a, const Pose &b, int count, int ms)
{
    QList<QPair<Pose, int>> steps;
    for (int i = 1; i <= count; ++i)
        steps.append({blend(a, b, double(i) / count), ms});
    return steps;
}

} // namespace

CharacterBuilder::CharacterBuilder(const CharacterArtist &artist)
    : m_artist(artist)
{
}

int CharacterBuilder::imageFor(const Pose &pose)
{
    QImage image(m_artist.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.translate((image.width() - CharacterArtist::DesignWidth) / 2.0,
                          image.height() - CharacterArtist::DesignHeight - 4);
        m_artist.draw(painter, pose);
    }
    const int known = int(m_file.images.indexOf(image));
    if (known >= 0)
        return known;
    m_file.images.append(image);
    return int(m_file.images.size()) - 1;
}

void CharacterBuilder::add(const QString &name, const QList<Step> &steps)
{
    QList<CharacterFrame> frames;
    for (const Step &step : steps)
        frames.append({imageFor(step.first), step.second});
    m_file.animations.insert(name, frames);
}

CharacterFile CharacterBuilder::build()
{
    m_file = CharacterFile();
    m_file.name = m_artist.name();
    m_file.description = m_artist.description();
    m_file.size = m_artist.size();
    m_file.balloonBackground = m_artist.balloonBackground();
    m_file.balloonBorder = m_artist.balloonBorder();
    m_file.balloonText = m_artist.balloonText();

    const Pose still = rest();
    add(QStringLiteral("RestPose"), {{still, 100}});

    Pose half = still;
    half.eyes = 0.45;
    Pose shut = still;
    shut.eyes = 0.0;
    add(QStringLiteral("Blink"), {{still, 60}, {half, 50}, {shut, 90}, {half, 50}, {still, 80}});

    // Showing and hiding: grows out of a small glowing point and back.
    Pose tiny = still;
    tiny.scale = 0.15;
    tiny.opacity = 0.0;
    tiny.glow = 1.0;
    QList<Step> show = tween(tiny, still, 8, 50);
    show.append({still, 80});
    add(QStringLiteral("Show"), show);
    QList<Step> hide{{still, 60}};
    hide.append(tween(still, tiny, 8, 50));
    add(QStringLiteral("Hide"), hide);

    // Greeting: the right arm goes up and waves, with a happy face, then a small bow.
    Pose up = still;
    up.rightArm = 150;
    up.happyEyes = true;
    up.mouth = 0.6;
    up.glow = 0.8;
    Pose wave = up;
    wave.rightArm = 115;
    wave.tilt = 3;
    Pose bow = still;
    bow.bow = 1.0;
    bow.eyes = 0.0;
    bow.happyEyes = true;
    QList<Step> greet = tween(still, up, 4, 50);
    for (int i = 0; i < 3; ++i) {
        greet.append(tween(up, wave, 2, 60));
        greet.append(tween(wave, up, 2, 60));
    }
    greet.append(tween(up, still, 3, 50));
    greet.append(tween(still, bow, 3, 60));
    greet.append({bow, 250});
    greet.append(tween(bow, still, 3, 60));
    add(QStringLiteral("Greet"), greet);

    // Acknowledging: a nod with smiling eyes.
    Pose nod = still;
    nod.bow = 0.6;
    nod.happyEyes = true;
    nod.eyes = 0.0;
    QList<Step> acknowledge = tween(still, nod, 3, 60);
    acknowledge.append({nod, 150});
    acknowledge.append(tween(nod, still, 3, 60));
    add(QStringLiteral("Acknowledge"), acknowledge);

    // Speaking: the mouth opens and closes, played over and over.
    Pose open1 = still;
    open1.mouth = 0.5;
    open1.bob = -1;
    Pose open2 = still;
    open2.mouth = 1.0;
    open2.bob = -2;
    open2.glow = 0.65;
    add(QStringLiteral("Speak"), {{still, 90}, {open1, 80}, {open2, 110}, {open1, 80}, {still, 70}, {open1, 90}});

    // Moving: a lean into the way and a bounce, over and over.
    auto walk = [&](const QString &name, double tilt, double look, double lookY, double arms) {
        Pose a = still;
        a.tilt = tilt;
        a.lookX = look;
        a.lookY = lookY;
        a.leftArm = arms;
        a.rightArm = arms + 20;
        Pose b = a;
        b.bob = -8;
        b.leftArm = arms + 20;
        b.rightArm = arms;
        QList<Step> steps = tween(a, b, 3, 60);
        steps.append(tween(b, a, 3, 60));
        add(name, steps);
    };
    walk(QStringLiteral("MoveLeft"), -10, -1, 0, 30);
    walk(QStringLiteral("MoveRight"), 10, 1, 0, 30);
    walk(QStringLiteral("MoveUp"), 0, 0, -1, 70);
    walk(QStringLiteral("MoveDown"), 0, 0, 1, 20);

    // Gesturing: the arm on that side points, the eyes follow, then back.
    auto gesture = [&](const QString &name, double left, double right, double look, double lookY, double lean) {
        Pose point = still;
        point.leftArm = left;
        point.rightArm = right;
        point.lookX = look;
        point.lookY = lookY;
        point.tilt = lean;
        point.mouth = 0.3;
        QList<Step> steps = tween(still, point, 4, 50);
        steps.append({point, 700});
        steps.append(tween(point, still, 4, 50));
        add(name, steps);
    };
    gesture(QStringLiteral("GestureLeft"), 95, 0, -1, 0, -4);
    gesture(QStringLiteral("GestureRight"), 0, 95, 1, 0, 4);
    gesture(QStringLiteral("GestureUp"), 0, 165, 0, -1, 0);
    gesture(QStringLiteral("GestureDown"), 40, 40, 0, 1, 0);

    // Idling: looking around, listening with the head on one side.
    Pose lookLeft = still;
    lookLeft.lookX = -1;
    Pose lookRight = still;
    lookRight.lookX = 1;
    QList<Step> idle = tween(still, lookLeft, 3, 60);
    idle.append({lookLeft, 500});
    idle.append(tween(lookLeft, lookRight, 4, 60));
    idle.append({lookRight, 500});
    idle.append(tween(lookRight, still, 3, 60));
    add(QStringLiteral("Idle"), idle);

    Pose listen = still;
    listen.headTilt = 12;
    listen.lookY = -0.6;
    listen.glow = 0.7;
    QList<Step> listening = tween(still, listen, 4, 60);
    listening.append({listen, 900});
    listening.append(tween(listen, still, 4, 60));
    add(QStringLiteral("Listening"), listening);

    Pose hear = still;
    hear.headTilt = -10;
    hear.leftArm = 120;
    hear.lookX = -0.6;
    QList<Step> hearing = tween(still, hear, 4, 60);
    hearing.append({hear, 900});
    hearing.append(tween(hear, still, 4, 60));
    add(QStringLiteral("Hearing"), hearing);

    m_file.states = {
        {QStringLiteral("Showing"), {QStringLiteral("Show")}},
        {QStringLiteral("Hiding"), {QStringLiteral("Hide")}},
        {QStringLiteral("Speaking"), {QStringLiteral("Speak")}},
        {QStringLiteral("Moving"), {QStringLiteral("MoveLeft"), QStringLiteral("MoveRight"), QStringLiteral("MoveUp"), QStringLiteral("MoveDown")}},
        {QStringLiteral("Gesturing"), {QStringLiteral("GestureLeft"), QStringLiteral("GestureRight"), QStringLiteral("GestureUp"), QStringLiteral("GestureDown")}},
        {QStringLiteral("Idling"), {QStringLiteral("Idle"), QStringLiteral("Blink")}},
        {QStringLiteral("Listening"), {QStringLiteral("Listening")}},
        {QStringLiteral("Hearing"), {QStringLiteral("Hearing")}},
    };
    return m_file;
}
