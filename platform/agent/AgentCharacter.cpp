#include "platform/agent/AgentCharacter.h"
#include "platform/agent/AgentError.h"
#include "platform/agent/CharacterWindow.h"
#include "platform/agent/ClipPlayer.h"
#include "platform/agent/CharacterStage.h"
#include "platform/agent/SpeechBalloon.h"
#include "platform/agent/SpeechSynthesizer.h"
#include "platform/agent/SpeechText.h"
#include "platform/agent/Voice.h"

#include <QGuiApplication>
#include <QRandomGenerator>
#include <QScreen>
#include <QVariantAnimation>

namespace {

constexpr int IdleDelayMs = 10000;
constexpr int BalloonLingerMs = 1500;
// Playback starts a little after the request does; the mouth keeps moving
// until the sound has surely ended.
constexpr int SpeechTailMs = 300;
// Without a voice the balloon stays up about as long as reading takes.
constexpr int ReadingMsPerCharacter = 160;
constexpr int MinimumReadingMs = 2000;

QRect screenArea()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen ? screen->availableGeometry() : QRect(0, 0, 1920, 1080);
}

} // namespace

AgentCharacter::AgentCharacter(const QString &id, const CharacterFile &file, QObject *parent)
    : QObject(parent)
    , m_id(id)
    , m_file(file)
    , m_window(new CharacterWindow(file.size))
    , m_balloon(new SpeechBalloon)
    , m_player(new AnimationPlayer(this))
    , m_audio(new ClipPlayer(this))
    , m_walk(new QVariantAnimation(this))
{
    // A new character waits in the lower right corner, out of the way of the
    // program's main buttons.
    const QRect area = screenArea();
    m_position = QPoint(area.right() - Width() - 40, area.bottom() - Height() - 40);
    m_window->move(m_position);
    m_balloon->setColours(m_file.balloonBackground, m_file.balloonBorder, m_file.balloonText);
    showRestFrame();
    connect(CharacterStage::instance(), &CharacterStage::perchChanged, this, &AgentCharacter::placeOnStage);
    placeOnStage();

    connect(m_player, &AnimationPlayer::frameShown, this, &AgentCharacter::showImage);
    connect(m_player, &AnimationPlayer::finished, this, [this] {
        if (m_idleAnimating) {
            m_idleAnimating = false;
            m_idleTimer.start();
            return;
        }
        if (!m_current)
            return;
        if (m_current->kind == AgentRequest::Kind::Hide) {
            m_balloon->hide();
            m_window->hide();
            m_wantsShown = false;
        }
        complete();
    });

    connect(m_window, &CharacterWindow::moved, this, [this] {
        m_position = m_window->pos();
        if (m_balloon->isVisible())
            m_balloon->follow(m_window->geometry());
    });

    m_walk->setEasingCurve(QEasingCurve::InOutSine);
    connect(m_walk, &QVariantAnimation::valueChanged, this, [this](const QVariant &value) {
        m_window->move(value.toPoint());
    });
    connect(m_walk, &QVariantAnimation::finished, this, [this] {
        m_player->stop();
        showRestFrame();
        complete();
    });

    m_startTimer.setSingleShot(true);
    m_startTimer.setInterval(0);
    connect(&m_startTimer, &QTimer::timeout, this, &AgentCharacter::startNext);

    m_mouthTimer.setInterval(40);
    connect(&m_mouthTimer, &QTimer::timeout, this, &AgentCharacter::moveMouth);

    m_speechTimer.setSingleShot(true);
    connect(&m_speechTimer, &QTimer::timeout, this, [this] {
        m_mouthTimer.stop();
        m_mouthMoving = false;
        m_player->stop();
        showRestFrame();
        m_balloonTimer.start();
        complete();
    });

    m_balloonTimer.setSingleShot(true);
    m_balloonTimer.setInterval(BalloonLingerMs);
    connect(&m_balloonTimer, &QTimer::timeout, m_balloon, &QWidget::hide);

    m_idleTimer.setSingleShot(true);
    m_idleTimer.setInterval(IdleDelayMs);
    connect(&m_idleTimer, &QTimer::timeout, this, &AgentCharacter::playIdleAnimation);
}

AgentCharacter::~AgentCharacter()
{
    abortAll();
    delete m_balloon;
    delete m_window;
}

void AgentCharacter::setLanguageID(int languageId)
{
    note(QStringLiteral("LanguageID %1").arg(languageId));
    m_languageId = languageId;
}

void AgentCharacter::setTTSModeID(const QString &modeId)
{
    note(QStringLiteral("TTSModeID ") + modeId);
    if (!Voice::isInstalled(modeId))
        throw AgentError::voiceNotInstalled(modeId);
    m_ttsModeId = modeId;
}

void AgentCharacter::Get(const QString &kind, const QString &names)
{
    note(QStringLiteral("Get %1 %2").arg(kind, names));
    const bool states = kind.compare(u"State", Qt::CaseInsensitive) == 0;
    const bool animations = kind.compare(u"Animation", Qt::CaseInsensitive) == 0;
    if (!states && !animations)
        return; // sounds and other kinds need no preparing here
    for (const QString &name : names.split(u',', Qt::SkipEmptyParts)) {
        if (states ? !m_file.hasState(name) : !m_file.hasAnimation(name))
            throw AgentError::animationNotFound(name.trimmed());
    }
}

void AgentCharacter::Show()
{
    note(QStringLiteral("Show"));
    enqueue(AgentRequest(AgentRequest::Kind::Show));
}

void AgentCharacter::Hide()
{
    note(QStringLiteral("Hide"));
    enqueue(AgentRequest(AgentRequest::Kind::Hide));
}

void AgentCharacter::Play(const QString &animation)
{
    note(QStringLiteral("Play ") + animation);
    if (!m_file.hasAnimation(animation))
        throw AgentError::animationNotFound(animation);
    AgentRequest request(AgentRequest::Kind::Play);
    request.animation = animation;
    enqueue(request);
}

void AgentCharacter::Speak(const QString &text)
{
    note(QStringLiteral("Speak ") + text);
    AgentRequest request(AgentRequest::Kind::Speak);
    request.text = text;
    // The voice starts reading at once, so that the sound is ready by the
    // time the character gets to this request.
    // Without a voice there is nothing to read: the balloon alone speaks.
    request.speech = new SpeechSynthesizer(this);
    request.speech->start(m_ttsModeId.isEmpty() ? QString() : text);
    enqueue(request);
}

void AgentCharacter::Stop()
{
    note(QStringLiteral("Stop"));
    abortAll();
}

void AgentCharacter::StopAll()
{
    note(QStringLiteral("StopAll"));
    abortAll();
}

void AgentCharacter::MoveTo(int x, int y, int speed)
{
    note(QStringLiteral("MoveTo %1,%2").arg(x).arg(y));
    AgentRequest request(AgentRequest::Kind::MoveTo);
    request.point = QPoint(x, y);
    request.speed = speed;
    enqueue(request);
}

void AgentCharacter::GestureAt(int x, int y)
{
    note(QStringLiteral("GestureAt %1,%2").arg(x).arg(y));
    AgentRequest request(AgentRequest::Kind::GestureAt);
    request.point = QPoint(x, y);
    enqueue(request);
}

void AgentCharacter::Activate()
{
    note(QStringLiteral("Activate"));
    if (Visible()) {
        m_window->raise();
        if (m_balloon->isVisible())
            m_balloon->raise();
    }
}

bool AgentCharacter::Visible() const
{
    return m_window->isVisible();
}

QStringList AgentCharacter::pendingRequests() const
{
    QStringList requests;
    if (m_current)
        requests.append(m_current->describe());
    for (const AgentRequest &request : m_queue)
        requests.append(request.describe());
    return requests;
}

void AgentCharacter::enqueue(AgentRequest request)
{
    m_queue.push_back(std::move(request));
    if (!m_current)
        m_startTimer.start();
}

void AgentCharacter::startNext()
{
    if (m_current)
        return;
    if (m_queue.empty()) {
        if (Visible())
            m_idleTimer.start();
        emit queueEmptied();
        return;
    }
    m_idleTimer.stop();
    if (m_idleAnimating) {
        m_idleAnimating = false;
        m_player->stop();
    }
    m_current = std::make_unique<AgentRequest>(std::move(m_queue.front()));
    m_queue.pop_front();
    emit requestStarted(m_current->describe());

    switch (m_current->kind) {
    // clang-format off
    case AgentRequest::Kind::Show: beginShow(); break;
    case AgentRequest::Kind::Hide: beginHide(); break;
    case AgentRequest::Kind::Play: beginPlay(); break;
    case AgentRequest::Kind::Speak: beginSpeak(); break;
    case AgentRequest::Kind::MoveTo: beginMove(); break;
    case AgentRequest::Kind::GestureAt: beginGesture(); break;
        // clang-format on
    }
}

void AgentCharacter::complete()
{
    if (!m_current)
        return;
    const std::unique_ptr<AgentRequest> done = std::move(m_current);
    discard(done->speech);
    emit requestCompleted(done->describe());
    m_startTimer.start();
}

void AgentCharacter::abortAll()
{
    m_startTimer.stop();
    m_speechTimer.stop();
    m_mouthTimer.stop();
    m_mouthMoving = false;
    m_idleTimer.stop();
    m_idleAnimating = false;
    m_player->stop();
    m_walk->stop();
    m_audio->stop();
    for (AgentRequest &request : m_queue)
        discard(request.speech);
    m_queue.clear();
    if (m_current) {
        discard(m_current->speech);
        m_current.reset();
    }
    m_balloon->hide();
    if (Visible()) {
        showRestFrame();
        m_idleTimer.start();
    }
}

void AgentCharacter::discard(SpeechSynthesizer *speech)
{
    if (!speech)
        return;
    speech->disconnect(this);
    speech->cancel();
    speech->deleteLater();
}

// The character stands on its perch, as large as the perch allows; with no
// perch it steps aside. Clicks pass through it to the program.
void AgentCharacter::placeOnStage()
{
    const CharacterStage *stage = CharacterStage::instance();
    if (!stage->hosted())
        return;
    if (!m_window->testAttribute(Qt::WA_TransparentForMouseEvents)) {
        const bool shown = m_window->isVisible();
        m_window->setAttribute(Qt::WA_TransparentForMouseEvents);
        m_window->setWindowFlag(Qt::WindowTransparentForInput);
        if (shown)
            m_window->show();
    }
    const QRect place = stage->placeIn(m_file.size);
    if (place.isEmpty()) {
        m_window->hide();
        return;
    }
    m_walk->stop();
    m_window->setFixedSize(place.size());
    m_window->setFrame(m_window->frame());
    m_position = place.topLeft();
    m_window->move(m_position);
    if (m_wantsShown && !m_window->isVisible())
        m_window->show();
}

void AgentCharacter::beginShow()
{
    m_wantsShown = true;
    // On a stage with no room now the character comes out once it has.
    if (Visible() || (CharacterStage::instance()->hosted() && CharacterStage::instance()->perch().isEmpty())) {
        complete();
        return;
    }
    m_window->move(m_position);
    playAnimation(stateAnimation(QStringLiteral("Showing"), QStringLiteral("Show")), false);
    m_window->show();
}

void AgentCharacter::beginHide()
{
    if (!Visible()) {
        complete();
        return;
    }
    m_balloon->hide();
    playAnimation(stateAnimation(QStringLiteral("Hiding"), QStringLiteral("Hide")), false);
}

void AgentCharacter::beginPlay()
{
    // A hidden character has nothing to show; the request is done at once.
    if (!Visible()) {
        complete();
        return;
    }
    playAnimation(m_current->animation, false);
}

void AgentCharacter::beginSpeak()
{
    SpeechSynthesizer *speech = m_current->speech;
    if (speech->isFinished())
        speakNow();
    else
        connect(speech, &SpeechSynthesizer::finished, this, &AgentCharacter::speakNow, Qt::SingleShotConnection);
}

void AgentCharacter::speakNow()
{
    if (!m_current || m_current->kind != AgentRequest::Kind::Speak)
        return;
    const SpeechSynthesizer *speech = m_current->speech;
    const QString words = SpeechText::displayText(m_current->text);

    qint64 duration = 0;
    m_voiced.clear();
    if (speech->hasAudio()) {
        duration = speech->durationMs() + SpeechTailMs;
        for (const SpeechSynthesizer::Span &span : speech->voicedSpans())
            m_voiced.append({span.startMs, span.endMs});
        emit speechAudioReady(speech->audioPath(), speech->durationMs());
        m_audio->play(speech->audioPath());
    } else {
        int pauses = 0;
        for (const SpeechText::Piece &piece : SpeechText::split(m_current->text))
            pauses += piece.pauseMs;
        duration = std::max<qint64>(MinimumReadingMs, qint64(words.size()) * ReadingMsPerCharacter) + pauses;
        m_voiced.append({0, duration});
    }

    if (CharacterStage::instance()->hosted() && !words.isEmpty())
        emit CharacterStage::instance()->wordsShown(m_file.name, words);
    if (Visible() && !words.isEmpty()) {
        m_balloonTimer.stop();
        if (!CharacterStage::instance()->hosted())
            m_balloon->showText(words, m_window->geometry());
        m_speechClock.start();
        m_mouthTimer.start();
        moveMouth();
    }
    m_speechTimer.start(int(duration));
}

void AgentCharacter::moveMouth()
{
    const qint64 now = m_speechClock.elapsed();
    const bool voiced = std::any_of(m_voiced.cbegin(), m_voiced.cend(), [now](const QPair<qint64, qint64> &span) {
        return span.first <= now && now < span.second;
    });
    if (voiced == m_mouthMoving)
        return;
    m_mouthMoving = voiced;
    if (voiced) {
        playAnimation(stateAnimation(QStringLiteral("Speaking"), QStringLiteral("Speak")), true);
    } else {
        m_player->stop();
        showRestFrame();
    }
}

void AgentCharacter::beginMove()
{
    // On a host's stage the character keeps to its perch.
    const QPoint target = CharacterStage::instance()->hosted() ? m_position : m_current->point;
    if (!Visible() || m_current->speed <= 0 || target == m_position) {
        m_position = target;
        m_window->move(target);
        complete();
        return;
    }
    const QString way = direction(m_position, target);
    playAnimation(stateAnimation(QStringLiteral("Moving"), QStringLiteral("Move") + way), true);
    m_walk->setStartValue(m_position);
    m_walk->setEndValue(target);
    m_walk->setDuration(m_current->speed);
    m_walk->start();
}

void AgentCharacter::beginGesture()
{
    if (!Visible()) {
        complete();
        return;
    }
    const QPoint centre = m_position + QPoint(Width() / 2, Height() / 2);
    const QString way = direction(centre, m_current->point);
    playAnimation(stateAnimation(QStringLiteral("Gesturing"), QStringLiteral("Gesture") + way), false);
}

QString AgentCharacter::stateAnimation(const QString &state, const QString &preferred) const
{
    // The state's animation for this direction when it has one, else any of its animations.
    const QStringList names = m_file.state(state);
    for (const QString &name : names) {
        if (name.compare(preferred, Qt::CaseInsensitive) == 0)
            return name;
    }
    if (m_file.hasAnimation(preferred) || names.isEmpty())
        return preferred;
    return names.first();
}

void AgentCharacter::playAnimation(const QString &name, bool loop)
{
    // A missing animation plays as an empty one: done at once.
    if (m_file.hasAnimation(name))
        emit animationStarted(name);
    m_player->play(m_file.animation(name), loop);
}

void AgentCharacter::showRestFrame()
{
    const QList<CharacterFrame> rest = m_file.animation(QStringLiteral("RestPose"));
    showImage(rest.isEmpty() ? 0 : rest.first().image);
}

void AgentCharacter::showImage(int image)
{
    if (image >= 0 && image < m_file.imageCount())
        m_window->setFrame(m_file.image(image));
}

void AgentCharacter::playIdleAnimation()
{
    if (isBusy() || !Visible())
        return;
    const QStringList names = m_file.state(QStringLiteral("Idling"));
    if (names.isEmpty())
        return;
    const QString name = names.at(QRandomGenerator::global()->bounded(int(names.size())));
    m_idleAnimating = true;
    playAnimation(name, false);
}

QString AgentCharacter::direction(QPoint from, QPoint to)
{
    const QPoint delta = to - from;
    if (std::abs(delta.x()) >= std::abs(delta.y()))
        return delta.x() < 0 ? QStringLiteral("Left") : QStringLiteral("Right");
    return delta.y() < 0 ? QStringLiteral("Up") : QStringLiteral("Down");
}
