#include "platform/vb/VbRandom.h"

#include <QTime>

#include <bit>

namespace {

constexpr std::uint32_t InitialState = 0x50000;
constexpr std::uint32_t Mask24 = 0xFFFFFF;

std::uint32_t currentState = InitialState;

float value()
{
    return float(currentState) / float(1 << 24);
}

} // namespace

void VbRandom::step()
{
    currentState = (currentState * 0x43FD43FDu + 0xC39EC3u) & Mask24;
}

float VbRandom::rnd()
{
    step();
    return value();
}

float VbRandom::rnd(float n)
{
    if (n < 0.0f) {
        const std::uint32_t bits = std::bit_cast<std::uint32_t>(n);
        currentState = (bits + (bits >> 24)) & Mask24;
    } else if (n == 0.0f) {
        return value();
    }
    step();
    return value();
}

void VbRandom::randomize(double seed)
{
    const std::uint64_t bits = std::bit_cast<std::uint64_t>(seed);
    const std::uint32_t high = std::uint32_t(bits >> 32);
    const std::uint32_t folded = ((high >> 16) ^ high) & 0xFFFF;
    currentState = (currentState & 0xFF) | (folded << 8);
}

float VbRandom::timer()
{
    return float(QTime::currentTime().msecsSinceStartOfDay()) / 1000.0f;
}

void VbRandom::randomizeTimer()
{
    randomize(double(timer()));
}

void VbRandom::restart()
{
    currentState = InitialState;
}

std::uint32_t VbRandom::state()
{
    return currentState;
}
