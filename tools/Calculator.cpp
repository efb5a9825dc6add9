#include "tools/Calculator.h"

namespace {

const QChar Backspace(8);

} // namespace

Calculator::Calculator(QObject *parent)
    : QObject(parent)
{
}

void Calculator::Clear()
{
    m_state = Cleared;
    m_text = Decimal().toDisplayText();
    m_accumulator.reset();
    m_operand.reset();
    m_count = 0;
    m_operator = QStringLiteral(" ");
    // DecimalPoint stays: the next entry resets it.
    emit Change();
}

void Calculator::SetText(const QString &keys)
{
    if (m_state != Entering) {
        m_state = Entering;
        m_text = Decimal().toDisplayText();
        m_decimalPoint = false;
    }
    for (const QChar key : keys) {
        if (key == u'-')
            m_text.prepend(u'-'); // not checked: a second one makes a text Eval cannot read
        else if (key >= u'0' && key <= u'9')
            appendDigit(key);
        else if (key == u'.')
            m_decimalPoint = true; // the "." is already shown
        else if (key == Backspace)
            m_text.chop(1); // DecimalPoint stays even when the "." goes
        // The yen key "\", ",", " " and anything else: ignored.
    }
}

void Calculator::appendDigit(QChar digit)
{
    if (m_decimalPoint) {
        // Fraction digits are shown as typed until the next operator.
        m_text.append(digit);
        return;
    }
    const qsizetype point = m_text.indexOf(u'.');
    if (point < 0)
        throw VbError::invalidArgument(); // the "." went with a backspace
    const QString whole = m_text.left(point) + digit;
    try {
        m_text = Decimal::fromText(whole).toDisplayText();
    } catch (const VbError &error) {
        // Like the Format function, leave a text that is no number as it is.
        if (error.number() != VbError::typeMismatch().number())
            throw;
        m_text = whole;
    }
}

Decimal Calculator::Eval(const QString &operatorKey)
{
    Decimal shown;
    try {
        if (m_state == Cleared || m_state == Entering) {
            ++m_count;
            if (m_count == 1)
                m_accumulator = Decimal::fromText(m_text);
            if (m_count == 2) {
                m_operand = Decimal::fromText(m_text);
                m_count = 1;
                m_accumulator = carryOut(*m_operand);
            }
            m_state = ResultShown;
            m_text = m_accumulator.value_or(Decimal()).toDisplayText();
        }
        // With a result already shown nothing is computed: the new operator
        // only replaces the pending one, and "=" does not repeat the last step.
        m_operator = operatorKey.isEmpty() ? QStringLiteral(" ") : operatorKey.left(1);
        shown = Decimal::fromText(m_text);
    } catch (const VbError &error) {
        fail(error);
    }
    emit Change();
    return shown;
}

// The pending operation on the accumulator; an empty accumulator (left so by
// a failed first number) counts as zero.
Decimal Calculator::carryOut(const Decimal &operand) const
{
    const Decimal accumulator = m_accumulator.value_or(Decimal());
    if (m_operator == u"+")
        return accumulator + operand;
    if (m_operator == u"-")
        return accumulator - operand;
    if (m_operator == u"*")
        return accumulator * operand;
    if (m_operator == u"/")
        return accumulator / operand;
    if (m_operator == u"=")
        return operand; // the number typed after "=" starts a new calculation
    return accumulator;
}

Decimal Calculator::EvalPercent()
{
    Decimal shown;
    try {
        // The result counts as a number being entered: the next operator takes
        // it as its operand. A plain division, not a share of the accumulator.
        m_state = Entering;
        m_text = (Decimal::fromText(m_text) / Decimal(100)).toDisplayText();
        shown = Decimal::fromText(m_text);
    } catch (const VbError &error) {
        fail(error);
    }
    emit Change();
    return shown;
}

Currency Calculator::Money() const
{
    try {
        return Decimal::fromText(m_text).toCurrency();
    } catch (const VbError &) {
        return Currency();
    }
}

void Calculator::fail(const VbError &error)
{
    emit Error(error.description());
    throw VbError(ErrorNumber, error.description());
}
