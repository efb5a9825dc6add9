#pragma once

#include "platform/vb/Currency.h"
#include "platform/vb/Decimal.h"
#include "platform/vb/VbError.h"

#include <QObject>
#include <QString>
#include <optional>

// A four-function desk calculator with exact decimal arithmetic. It knows
// nothing of keys or windows: the tool dialog feeds it the characters and
// operators of the pressed pad keys and shows its Text.
//
// Evaluation runs strictly left to right, as on a pocket calculator: no
// precedence, no parentheses, no memory. The running result keeps full
// precision; the display shows it in the format "#,0.##", whose "." is always
// there because number entry looks for it to find the whole part. The second
// fraction digit is rounded half away from zero, as the runtime's Format
// function does (Decimal::toDisplayText).
class Calculator : public QObject
{
    Q_OBJECT

public:
    // The error Eval and EvalPercent raise to their caller after Error.
    static constexpr int ErrorNumber = VbError::ObjectErrorBase + 513;

    enum : qint32 { Cleared = 0,
                    Entering = 1,
                    ResultShown = 2 };

    explicit Calculator(QObject *parent = nullptr);

    // Back to the cleared state, showing "0.".
    void Clear();

    QString Text() const { return m_text; }
    // Number entry, one key character after another: digits, ".", "-" (puts a
    // minus in front) and the backspace character (8); anything else is
    // ignored. The first key after a result or Clear starts a fresh number.
    // Throws invalidArgument for a digit while Text has no ".", and overflow
    // for a number too long to hold.
    void SetText(const QString &keys);

    // Takes the number shown, carries out the pending operation, and makes the
    // first character of operatorKey ("+", "-", "*", "/", "=") the pending one.
    // Returns the value as displayed.
    Decimal Eval(const QString &operatorKey);
    // The number shown divided by 100; returns it as displayed.
    Decimal EvalPercent();
    // The number shown as currency; zero when it is not a number.
    Currency Money() const;

    qint32 State() const { return m_state; }
    std::optional<Decimal> Accumulator() const { return m_accumulator; }
    std::optional<Decimal> Operand() const { return m_operand; }
    qint16 Count() const { return m_count; }
    // One character once cleared; empty before the first Clear.
    QString Operator() const { return m_operator; }
    bool DecimalPoint() const { return m_decimalPoint; }

signals:
    void Change();
    void Error(const QString &message);

private:
    void appendDigit(QChar digit);
    Decimal carryOut(const Decimal &operand) const;
    [[noreturn]] void fail(const VbError &error);

    qint32 m_state = Cleared;
    QString m_text;
    std::optional<Decimal> m_accumulator;
    std::optional<Decimal> m_operand;
    qint16 m_count = 0;
    QString m_operator;
    bool m_decimalPoint = false;
};
