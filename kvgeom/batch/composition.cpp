// SPDX-License-Identifier: MIT
#include <kvgeom/batch/composition.h>

namespace {

template <class Record, class Operation>
void ForEach(unsigned long count, Record* results, Operation operation) {
    for (unsigned long i = 0; i < count; ++i) {
        results[i] = operation(i);
    }
}

}  // namespace

void ComposeTransfs(const GTransf* first, const GTransf* second, unsigned long count,
                    GTransf* results) {
    ForEach(count, results, [=](unsigned long i) { return first[i] * second[i]; });
}

void InvertTransfs(const GTransf* transfs, unsigned long count, GTransf* results) {
    ForEach(count, results, [=](unsigned long i) { return transfs[i].Inverse(); });
}

void Compose4x4s(const G4x4* left, const G4x4* right, unsigned long count, G4x4* results) {
    ForEach(count, results, [=](unsigned long i) { return left[i] * right[i]; });
}

void Invert4x4s(const G4x4* matrices, unsigned long count, G4x4* results) {
    ForEach(count, results, [=](unsigned long i) { return matrices[i].Inverse(); });
}
