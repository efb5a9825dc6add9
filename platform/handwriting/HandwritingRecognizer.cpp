#include "platform/handwriting/HandwritingRecognizer.h"
#include "platform/RuntimeLog.h"

#include <QFileInfo>

#include <zinnia.h>

#include <algorithm>

namespace {

// The model's own square: points are whole numbers in it, fine enough that
// rounding loses nothing a hand can draw.
constexpr int ModelSquare = 1000;

int toModel(double value, double side)
{
    return std::clamp(int(value * ModelSquare / side + 0.5), 0, ModelSquare);
}

} // namespace

HandwritingRecognizer::HandwritingRecognizer(const QString &modelPath)
    : m_modelPath(modelPath)
{
}

HandwritingRecognizer::~HandwritingRecognizer() = default;

QString HandwritingRecognizer::defaultModelPath()
{
    const QString chosen = qEnvironmentVariable(ModelVariable);
    return chosen.isEmpty() ? QString::fromLatin1(DebianModel) : chosen;
}

bool HandwritingRecognizer::isAvailable() const
{
    if (m_recognizer)
        return true;
    const QFileInfo model(m_modelPath);
    return !m_openFailed && model.isFile() && model.isReadable();
}

bool HandwritingRecognizer::open()
{
    if (m_recognizer)
        return true;
    if (!isAvailable())
        return false;
    std::unique_ptr<zinnia::Recognizer> recognizer(zinnia::Recognizer::create());
    if (!recognizer || !recognizer->open(QFile::encodeName(m_modelPath).constData())) {
        m_openFailed = true;
        RuntimeLog::note("HandwritingRecognizer",
                         QStringLiteral("cannot open %1: %2")
                             .arg(m_modelPath, recognizer ? QString::fromUtf8(recognizer->what()) : QString()));
        return false;
    }
    m_recognizer = std::move(recognizer);
    m_character.reset(zinnia::Character::create());
    m_character->set_width(ModelSquare);
    m_character->set_height(ModelSquare);
    return true;
}

QList<HandwritingRecognizer::Candidate> HandwritingRecognizer::recognize(const QList<Stroke> &strokes, double side,
                                                                         int count)
{
    QList<Candidate> candidates;
    if (strokes.isEmpty() || side <= 0 || count <= 0 || !open())
        return candidates;
    m_character->clear();
    size_t id = 0;
    for (const Stroke &stroke : strokes) {
        if (stroke.isEmpty())
            continue;
        for (const QPointF &point : stroke)
            m_character->add(id, toModel(point.x(), side), toModel(point.y(), side));
        ++id;
    }
    if (id == 0)
        return candidates;
    const std::unique_ptr<zinnia::Result> result(m_recognizer->classify(*m_character, size_t(count)));
    if (!result)
        return candidates;
    for (size_t i = 0; i < result->size(); ++i)
        candidates.append({QString::fromUtf8(result->value(i)), result->score(i)});
    return candidates;
}
