// SPDX-License-Identifier: MIT
#include <kvgeom/textio/scanner.h>

// The C header declares what the system adds to the standard.
#include <locale.h>

#ifdef _WIN32
#include <windows.h>
#endif

namespace kvgeom::detail {

namespace {

// Callers don't ask how many conversions succeeded. The count is kept in a variable because some C
// libraries warn when it is dropped.

#ifdef _WIN32

using LocaleScanner = int(__cdecl*)(std::FILE*, const char*, _locale_t, ...);

LocaleScanner FindLocaleScanner() {
#if defined(_WIN64) || !defined(__MINGW32__)
    return _fscanf_l;
#else
    // Looked up at run time, because MinGW's import library for 32 bits lacks it. Null where the
    // system
    // lacks it, too.
    const HMODULE c_library = GetModuleHandleA("msvcrt.dll");
    return reinterpret_cast<LocaleScanner>(
        reinterpret_cast<void*>(GetProcAddress(c_library, "_fscanf_l")));
#endif
}

template <class... Numbers>
void ScanInCLocale(std::FILE* f, const char* format, Numbers*... numbers) {
    // Null when it can't be made, which stands for the current locale. Made once, never freed.
    static const _locale_t c_locale = _create_locale(LC_ALL, "C");
    static const LocaleScanner scanner = FindLocaleScanner();
    [[maybe_unused]] const int converted = scanner != nullptr
                                               ? scanner(f, format, c_locale, numbers...)
                                               : std::fscanf(f, format, numbers...);
}

#else

// Puts the calling thread under the C locale while it lives.
class CLocaleGuard {
  public:
    CLocaleGuard() : m_previous(uselocale(CLocale())) {}
    ~CLocaleGuard() { uselocale(m_previous); }
    CLocaleGuard(const CLocaleGuard&) = delete;
    CLocaleGuard& operator=(const CLocaleGuard&) = delete;

  private:
    // Null when it can't be made, which leaves the current locale in force. Made once, never freed.
    static locale_t CLocale() {
        static const locale_t c_locale = newlocale(LC_ALL_MASK, "C", nullptr);
        return c_locale;
    }

    locale_t m_previous;
};

template <class... Numbers>
void ScanInCLocale(std::FILE* f, const char* format, Numbers*... numbers) {
    const CLocaleGuard guard;
    [[maybe_unused]] const int converted = std::fscanf(f, format, numbers...);
}

#endif

}  // namespace

void Scan(std::FILE* f, double& x) {
    ScanInCLocale(f, "%lf", &x);
}

void Scan(std::FILE* f, double& x, double& y) {
    ScanInCLocale(f, "%lf%lf", &x, &y);
}

void Scan(std::FILE* f, double& x, double& y, double& z) {
    ScanInCLocale(f, "%lf%lf%lf", &x, &y, &z);
}

void Scan(std::FILE* f, double& x, double& y, double& z, double& w) {
    ScanInCLocale(f, "%lf%lf%lf%lf", &x, &y, &z, &w);
}

void Scan(std::FILE* f, unsigned long& count) {
    ScanInCLocale(f, "%lu", &count);
}

void Scan(std::FILE* f, unsigned short& number) {
    ScanInCLocale(f, "%hu", &number);
}

}  // namespace kvgeom::detail
