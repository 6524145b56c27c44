// SPDX-License-Identifier: MIT
#include "probe/scene.h"

#include "probe/progress_line.h"

#include <kvgeom/kvgeom.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace kvprobe {
namespace {

// The free space between two copies, in extents of the model.
constexpr double kGap = 0.1;

// The kernel's infinity.
constexpr double kUnbounded = 1e30;

// Boxes tested by one call: enough to forget the cost of a call, few enough to stay in the cache.
constexpr size_t kBoxesPerBatch = 4096;

// A model that is flat along an axis needs room on the grid all the same.
double Step(double extent) {
    return extent > 0 && extent < kUnbounded ? (1 + kGap) * extent : 1.0;
}

size_t CeilingOfRoot(size_t n) {
    return static_cast<size_t>(std::ceil(std::sqrt(static_cast<double>(n))));
}

}  // namespace

Scene::Scene(std::vector<Object> model, size_t copies, UpAxis up)
    : m_model(std::move(model)), m_copies(copies), m_columns(CeilingOfRoot(copies)) {
    m_boxes.reserve(m_model.size());
    for (const Object& object : m_model) {
        m_boxes.push_back(ModelBox(object));
    }
    const GBox around = BoxAround(m_boxes);
    const GVector extent = around.m_high - around.m_low;
    m_column_step = {Step(extent.m_x), 0, 0};
    m_row_step =
        up == UpAxis::kY ? GVector{0, 0, Step(extent.m_z)} : GVector{0, Step(extent.m_y), 0};
}

GVector Scene::Offset(size_t copy) const {
    const size_t column = copy % m_columns;
    const size_t row = copy / m_columns;
    return static_cast<double>(column) * m_column_step + static_cast<double>(row) * m_row_step;
}

double Scene::Reach() const {
    constexpr GPosition kOrigin = {0, 0, 0};
    const GBox around = BoxAround(m_boxes);
    const double rows = std::ceil(static_cast<double>(m_copies) / static_cast<double>(m_columns));
    return GDistance(kOrigin, around.m_low) + GDistance(kOrigin, around.m_high) +
           static_cast<double>(m_columns) * m_column_step.GetLength() +
           rows * m_row_step.GetLength();
}

Object Scene::At(size_t index) const {
    Object object = m_model[index % m_model.size()];
    const size_t copy = index / m_model.size();
    if (copy > 0) {
        G4x4 move;
        long err = 0;
        Translate4x4(Offset(copy), move, &err);
        object.placement = move * object.placement;
        object.name = Name(index);
    }
    return object;
}

std::string Scene::Name(size_t index) const {
    const size_t copy = index / m_model.size();
    const std::string& name = m_model[index % m_model.size()].name;
    return copy == 0 ? name : name + " of copy " + std::to_string(copy + 1);
}

GBox BoxAround(const std::vector<GBox>& boxes) {
    GBox result = boxes.front();
    for (const GBox& box : boxes) {
        result |= box;
    }
    return result;
}

Sieving Sieve(const Scene& scene, const std::vector<GBox>& boxes, const BatchTest& test,
              const std::function<void(size_t)>& visit) {
    using Clock = std::chrono::steady_clock;
    const size_t copies_per_batch = std::max<size_t>(1, kBoxesPerBatch / boxes.size());
    std::vector<GBox> batch;
    std::vector<unsigned char> answers;
    Sieving sieving;
    ProgressLine progress("testing the boxes");
    while (sieving.boxes < scene.Size()) {
        const size_t first = sieving.boxes;
        const size_t count = std::min(scene.Size() - first, copies_per_batch * boxes.size());
        batch.resize(count);
        answers.resize(count);
        for (size_t k = 0; k < count; k += boxes.size()) {
            MapBoxes(TranslateTransf(scene.Offset((first + k) / boxes.size())), boxes.data(),
                     boxes.size(), &batch[k]);
        }
        const Clock::time_point begin = Clock::now();
        const unsigned long passed = test(batch.data(), count, answers.data());
        sieving.seconds += std::chrono::duration<double>(Clock::now() - begin).count();
        for (size_t k = 0; passed > 0 && k < count; ++k) {
            if (answers[k] != 0) {
                visit(first + k);
            }
        }
        sieving.boxes += count;
        progress.Show(static_cast<double>(sieving.boxes) / static_cast<double>(scene.Size()));
    }
    return sieving;
}

}  // namespace kvprobe
