// SPDX-License-Identifier: MIT
#pragma once

#include "probe/model.h"

#include <kvgeom/boxes/box.h>
#include <kvgeom/points/vector.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace kvprobe {

enum class UpAxis { kY, kZ };

/// A model laid out any number of times on a level grid, the first copy where the model is. What is
/// one of its objects is numbered copy by copy.
class Scene {
  public:
    Scene(std::vector<Object> model, size_t copies, UpAxis up);

    size_t Size() const { return m_copies * m_model.size(); }
    bool IsRepeated() const { return m_copies > 1; }
    const std::vector<Object>& Model() const { return m_model; }

    /// The boxes around the objects of the model, in the coordinates of the model.
    const std::vector<GBox>& Boxes() const { return m_boxes; }

    Object At(size_t index) const;
    std::string Name(size_t index) const;

    /// How far a copy is moved.
    GVector Offset(size_t copy) const;

    /// A bound of how far from the origin any of the objects lies.
    double Reach() const;

  private:
    std::vector<Object> m_model;
    std::vector<GBox> m_boxes;
    size_t m_copies;
    size_t m_columns;  ///< of the grid
    GVector m_column_step;
    GVector m_row_step;
};

/// The box around boxes of which there is at least one.
GBox BoxAround(const std::vector<GBox>& boxes);

/// How many boxes were tested in batches, and how long that took, in seconds.
struct Sieving {
    size_t boxes = 0;
    double seconds = 0;

    Sieving& operator+=(const Sieving& other) {
        boxes += other.boxes;
        seconds += other.seconds;
        return *this;
    }
};

/// Answers for many boxes at once, as the batch calls do: one byte a box, the number of 1s.
using BatchTest =
    std::function<unsigned long(const GBox* boxes, unsigned long count, unsigned char* answers)>;

/// Runs a batch test on the boxes of all objects of the scene, given those of the model's objects,
/// and visits those whose boxes pass, in order.
Sieving Sieve(const Scene& scene, const std::vector<GBox>& boxes, const BatchTest& test,
              const std::function<void(size_t index)>& visit);

}  // namespace kvprobe
