// SPDX-License-Identifier: MIT

// The readers of the text format: the first byte chooses the record, the rest is the stream, of
// which several are read. What was read is written again, and no point beyond the array's hundred
// may be touched.

#include <kvgeom/kvgeom.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

std::array<GPosition, 101> g_points;

void SetRoom(GPtFence& fence) {
    fence.m_points = g_points.data();
}
void SetRoom(GPtFrustum& frustum) {
    frustum.m_fence.m_points = g_points.data();
}
void SetRoom(GRtPrism& prism) {
    prism.m_points = g_points.data();
}
template <class Record>
void SetRoom(Record&) {}

constexpr int kRecords = 3;

template <class Record>
void ReadAndWrite(std::FILE* stream, std::FILE* sink) {
    Record record = {};
    SetRoom(record);
    for (int i = 0; i < kRecords; ++i) {
        long err = 77;
        GRead_from_File(stream, record, &err);
        if (err != 0 && err != 1) {
            std::abort();
        }
        if (err == 0) {
            GPrint_to_File(sink, record, &err);
            std::rewind(sink);
        }
    }
}

constexpr std::array kReaders = {
    ReadAndWrite<GBoreLine>,  ReadAndWrite<GBoreCone>, ReadAndWrite<GPtFence>,
    ReadAndWrite<GPtFrustum>, ReadAndWrite<GRtPrism>,  ReadAndWrite<GMatrix>,
    ReadAndWrite<G4x4>,       ReadAndWrite<GBox>,      ReadAndWrite<GTransf>,
    ReadAndWrite<GMatrix2d>,  ReadAndWrite<GBox2d>,    ReadAndWrite<GTransf2d>};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static std::FILE* const sink = std::tmpfile();
    if (size < 2) {
        return 0;
    }
    g_points.back() = {7, 7, 7};
    std::FILE* const stream = fmemopen(const_cast<std::uint8_t*>(data + 1), size - 1, "r");
    kReaders[data[0] % kReaders.size()](stream, sink);
    std::fclose(stream);
    if (g_points.back().m_x != 7) {
        std::abort();
    }
    return 0;
}
