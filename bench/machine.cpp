// SPDX-License-Identifier: MIT
#include "machine.h"

#include <benchmark/benchmark.h>

#include <immintrin.h>

#include <string>

// How long the processor takes for an operation on the largest vectors that it has, with eight
// chains of them side by side, in which each waits for the one before. What a kernel can reach at
// best follows from these. Written as assembly, lest the compiler find out that all this is for
// nothing; compiled for the processor that it is measured on.
namespace bench {
namespace {

#if defined(__AVX512F__)
typedef __m512d Vector;
#elif defined(__AVX2__)
typedef __m256d Vector;
#endif

#if defined(__AVX2__)

constexpr int kLanes = sizeof(Vector) / sizeof(double);
constexpr int kChains = 8;
constexpr int kRounds = 1000;
constexpr int kOperations = kChains * kRounds;

struct Operands {
    Vector number = Vector{} + 1.0;
    alignas(64) double memory[kLanes * kChains] = {};

    double& Place(int i) { return memory[kLanes * i]; }
};

typedef void (*Operation)(Vector& chain, Operands& operands, int i);

inline void Load(Vector& x, Operands& operands, int i) {
    asm volatile("vmovupd %1, %0" : "=v"(x) : "m"(operands.Place(i)));
}
inline void Store(Vector& x, Operands& operands, int i) {
    asm volatile("vmovupd %1, %0" : "=m"(operands.Place(i)) : "v"(x));
}
inline void Repeat(Vector& x, Operands& operands, int i) {
    asm volatile("vbroadcastsd %1, %0" : "=v"(x) : "m"(operands.Place(i)));
}
inline void Permute(Vector& x, Operands& operands, int /*i*/) {
#if defined(__AVX512F__)
    const __m512i order = _mm512_set_epi64(6, 4, 2, 0, 7, 5, 3, 1);
    asm volatile("vpermt2pd %2, %1, %0" : "+v"(x) : "v"(order), "v"(operands.number));
#else
    asm volatile("vunpcklpd %1, %0, %0" : "+v"(x) : "v"(operands.number));
#endif
}
inline void Multiply(Vector& x, Operands& operands, int /*i*/) {
    asm volatile("vmulpd %1, %0, %0" : "+v"(x) : "v"(operands.number));
}
inline void Add(Vector& x, Operands& operands, int /*i*/) {
    asm volatile("vaddpd %1, %0, %0" : "+v"(x) : "v"(operands.number));
}
inline void MultiplyAdd(Vector& x, Operands& operands, int /*i*/) {
    asm volatile("vfmadd231pd %1, %1, %0" : "+v"(x) : "v"(operands.number));
}
inline void Minimum(Vector& x, Operands& operands, int /*i*/) {
    asm volatile("vminpd %1, %0, %0" : "+v"(x) : "v"(operands.number));
}
inline void Divide(Vector& x, Operands& operands, int /*i*/) {
    asm volatile("vdivpd %1, %0, %0" : "+v"(x) : "v"(operands.number));
}
template <Operation first, Operation second>
inline void InTurns(Vector& x, Operands& operands, int i) {
    (i % 2 == 0 ? first : second)(x, operands, i);
}

template <Operation operate>
void Measure(const std::string& operation) {
    const std::string name = "machine_" + operation + "/" + std::to_string(kOperations) + "/cpu";
    benchmark::RegisterBenchmark(name.c_str(), [](benchmark::State& state) {
        Operands operands;
        // An array would be kept in memory.
        Vector a = operands.number;
        Vector b = a, c = a, d = a, e = a, f = a, g = a, h = a;
        for (auto _ : state) {
            for (int round = 0; round < kRounds; ++round) {
                operate(a, operands, 0);
                operate(b, operands, 1);
                operate(c, operands, 2);
                operate(d, operands, 3);
                operate(e, operands, 4);
                operate(f, operands, 5);
                operate(g, operands, 6);
                operate(h, operands, 7);
            }
        }
        Vector sum = a + b + c + d + e + f + g + h;
        benchmark::DoNotOptimize(sum);
    });
}

#endif

}  // namespace

void RegisterMachine() {
#if defined(__AVX2__)
    benchmark::AddCustomContext("machine_lanes", std::to_string(kLanes));
    Measure<Load>("load");
    Measure<Store>("store");
    Measure<Repeat>("load_one_number");
    Measure<Permute>("permute");
    Measure<Multiply>("multiply");
    Measure<Add>("add");
    Measure<MultiplyAdd>("fused_multiply_add");
    Measure<Minimum>("minimum");
    Measure<Divide>("divide");
    Measure<InTurns<Permute, Multiply>>("permute_and_multiply");
    Measure<InTurns<Permute, Add>>("permute_and_add");
    Measure<InTurns<Multiply, Add>>("multiply_and_add");
    Measure<InTurns<Minimum, Add>>("minimum_and_add");
    Measure<InTurns<MultiplyAdd, Minimum>>("fused_multiply_add_and_minimum");
    Measure<InTurns<Load, Add>>("load_and_add");
#endif
}

}  // namespace bench
