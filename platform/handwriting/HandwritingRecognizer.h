#pragma once

#include <QList>
#include <QPointF>
#include <QString>

#include <memory>

namespace zinnia {
class Character;
class Recognizer;
} // namespace zinnia

// Reads one handwritten character: the system's Zinnia recogniser with its
// Japanese model. Strokes are point lists in the order they were drawn, in a
// square box of any size; the recogniser answers with characters, best first.
//
// The model is the Debian one (tegaki-zinnia-japanese) unless the variable
// LANTERN_HANDWRITING_MODEL names another file. It is opened when first
// needed, since opening it takes longer than starting the pad should.
class HandwritingRecognizer
{
public:
    using Stroke = QList<QPointF>;

    struct Candidate
    {
        QString text;
        double score = 0;
    };

    static constexpr auto ModelVariable = "LANTERN_HANDWRITING_MODEL";
    static constexpr auto DebianModel = "/usr/share/tegaki/models/zinnia/handwriting-ja.model";

    explicit HandwritingRecognizer(const QString &modelPath = defaultModelPath());
    ~HandwritingRecognizer();

    static QString defaultModelPath();
    QString modelPath() const { return m_modelPath; }

    // Whether the model is there to be read: a missing or unreadable file,
    // or one that failed to open, is not.
    bool isAvailable() const;
    // Opens the model now rather than at the first recognition.
    bool open();

    // Up to `count` characters for these strokes drawn in a square of side
    // `side`, best first; none for no strokes or no model.
    QList<Candidate> recognize(const QList<Stroke> &strokes, double side, int count);

private:
    QString m_modelPath;
    bool m_openFailed = false;
    std::unique_ptr<zinnia::Recognizer> m_recognizer;
    std::unique_ptr<zinnia::Character> m_character;
};
