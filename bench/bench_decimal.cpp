// The decimal type's four operations on ordinary and on worst-case operands
// (full 96-bit mantissas, scale 28), and a calculator key sequence.
#include "platform/vb/Decimal.h"
#include "tools/Calculator.h"

#include <benchmark/benchmark.h>

static void addSmall(benchmark::State &state)
{
    const Decimal a = Decimal::fromText("1234.5"), b = Decimal::fromText("0.25");
    for (auto _ : state)
        benchmark::DoNotOptimize(a + b);
}
BENCHMARK(addSmall);

static void addRounded(benchmark::State &state)
{
    const Decimal a = Decimal::fromText("79228162514264337593543950330");
    const Decimal b = Decimal::fromText("0.0000000000000000000000000001");
    for (auto _ : state)
        benchmark::DoNotOptimize(a + b);
}
BENCHMARK(addRounded);

static void multiplyFull(benchmark::State &state)
{
    const Decimal a = Decimal::fromText("7.9228162514264337593543950335");
    const Decimal b = Decimal::fromText("3.1415926535897932384626433832");
    for (auto _ : state)
        benchmark::DoNotOptimize(a * b);
}
BENCHMARK(multiplyFull);

static void divideOneThird(benchmark::State &state)
{
    const Decimal a(1), b(3);
    for (auto _ : state)
        benchmark::DoNotOptimize(a / b);
}
BENCHMARK(divideOneThird);

static void divideFull(benchmark::State &state)
{
    const Decimal a = Decimal::fromText("7.9228162514264337593543950335");
    const Decimal b = Decimal::fromText("3.1415926535897932384626433832");
    for (auto _ : state)
        benchmark::DoNotOptimize(a / b);
}
BENCHMARK(divideFull);

static void displayText(benchmark::State &state)
{
    const Decimal a = Decimal::fromText("1234567.6666666666666666666667");
    for (auto _ : state)
        benchmark::DoNotOptimize(a.toDisplayText());
}
BENCHMARK(displayText);

static void calculatorSequence(benchmark::State &state)
{
    Calculator calculator;
    for (auto _ : state) {
        calculator.Clear();
        calculator.SetText("1234");
        calculator.Eval("/");
        calculator.SetText("7");
        calculator.Eval("*");
        calculator.SetText("3.5");
        benchmark::DoNotOptimize(calculator.Eval("="));
    }
}
BENCHMARK(calculatorSequence);

BENCHMARK_MAIN();
