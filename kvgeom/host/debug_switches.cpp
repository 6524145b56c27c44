// SPDX-License-Identifier: MIT
#include <kvgeom/host/debug_entry.h>
#include <kvgeom/host/debug_switches.h>
#include <kvgeom/host/once_int.h>
#include <kvgeom/host/registry.h>

namespace kvgeom::detail {
namespace {

// A switch: the name of its value, what the first byte of the data means, and the result where
// there are no data.
class Switch {
  public:
    constexpr Switch(const char* name, int (*meaning)(unsigned char), int default_result)
        : m_name(name), m_meaning(meaning), m_default_result(default_result) {}

    int Get() {
        return m_result.Get([this] {
            const std::optional<RegistryData> data = QueryDebugValue(m_name);
            return data ? m_meaning(data->front()) : m_default_result;
        });
    }
    void Set(int result) { m_result.Set(result); }

  private:
    const char* m_name;
    int (*m_meaning)(unsigned char);
    int m_default_result;
    OnceInt m_result;
};

int AsSigned(unsigned char byte) {
    return static_cast<signed char>(byte);
}

int IsOne(unsigned char byte) {
    return byte == 1 ? 1 : 0;
}

int IsNotOne(unsigned char byte) {
    return byte == 1 ? 0 : 1;
}

constinit Switch g_validate_level("MathValidateLevel", AsSigned, 0);
constinit Switch g_check_boundaries("SkipCheckGeom3dBoundaries", IsNotOne, 1);
constinit Switch g_boundary_self_crossing("ValidateBndSelfInterXO", IsOne, 0);
constinit Switch g_all_surface_boundaries("ValidateAllGTSrfBnd", IsOne, 0);
constinit Switch g_core_math_reader("ValidateMathEnabled", IsOne, 0);
constinit OnceInt g_core_math;

constinit OnceInt g_debug_entry;

}  // namespace

int ReadOrCreateRegEntry(const char* name, int default_value) {
    return g_debug_entry.Get([name, default_value] {
        const std::optional<RegistryData> data = QueryOrCreateDebugValue(name, default_value);
        return data ? ToInt(*data) : 0;
    });
}

}  // namespace kvgeom::detail

using namespace kvgeom::detail;

int CheckRegistryForMathValidateLevel() {
    return g_validate_level.Get();
}

void SetMathValidateLevel(int level) {
    g_validate_level.Set(level);
}

int CheckRegistryForGeom3dBoundary() {
    return g_check_boundaries.Get();
}

int CheckRegistryBoundarySelfXO() {
    return g_boundary_self_crossing.Get();
}

int CheckRegistryValidateAllGTSrfBnd() {
    return g_all_surface_boundaries.Get();
}

int CheckRegistryValidateCoreMath() {
    return g_core_math.Get([] { return g_core_math_reader.Get(); });
}

void ResetRegistryValidationMathFlag() {
    g_core_math.Reset();
}

int CheckDebugRegEntryCoreMath(char* name, int default_value) {
    return ReadOrCreateRegEntry(name, default_value);
}
