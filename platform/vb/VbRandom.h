#pragma once

#include <cstdint>

// The runtime's random numbers, Rnd and Randomize, bit for bit: a 24-bit
// linear congruential generator whose value is state / 2^24. Every run starts
// from the same state, so without Randomize a program picks the same numbers
// each time, exactly as the runtime does.
class VbRandom
{
public:
    // Rnd: the next number in [0, 1).
    static float rnd();
    // Rnd(n): n > 0 the next number, n = 0 the last one again, n < 0 a number
    // that depends only on n (the generator restarts from n's bits).
    static float rnd(float n);

    // Randomize n: keeps the low byte of the state and replaces the sixteen
    // bits above it with the two halves of the double n's high word, xored.
    static void randomize(double seed);
    // Randomize Timer: seeds from the seconds since midnight, to the
    // millisecond, rounded to single precision as the runtime's Timer is.
    // Only the high word of that number reaches the state, so two starts
    // within a few hundredths of a second get the same seed.
    static void randomizeTimer();
    static float timer();

    // Back to the state of a fresh run (for a program that wants a known sequence).
    static void restart();
    static std::uint32_t state();

private:
    static void step();
};
