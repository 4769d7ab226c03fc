#include <unicode/ucol.h>
#include <winnls.h>

#include <memory>
#include <mutex>

#include "platform/kernel/encoding.h"
#include "platform/kernel/locale_source.h"

namespace platform {
namespace {

struct CollatorCloser {
  void operator()(UCollator* collator) const { ::ucol_close(collator); }
};
using Collator = std::unique_ptr<UCollator, CollatorCloser>;

// Null for a locale that ICU does not support.
Collator OpenCollator(const std::string& locale) {
  UErrorCode error = U_ZERO_ERROR;
  Collator collator(::ucol_open(locale.c_str(), &error));
  if (U_FAILURE(error)) return nullptr;
  ::ucol_setStrength(collator.get(), UCOL_SECONDARY);
  return collator;
}

// The collator of the last locale: sorting a list compares many times.
struct CachedCollator {
  std::mutex mutex;
  std::string locale;
  Collator collator;
};

}  // namespace

int CompareTexts(std::wstring_view left, std::wstring_view right) {
  static CachedCollator& cached = *new CachedCollator;
  const std::string locale = FormatLocale(LOCALE_USER_DEFAULT, "LC_COLLATE");
  const std::lock_guard lock(cached.mutex);
  if (cached.locale != locale) {
    cached.collator = OpenCollator(locale);
    cached.locale = locale;
  }
  if (cached.collator == nullptr) return LowerName(left).compare(LowerName(right));
  UErrorCode error = U_ZERO_ERROR;
  return ::ucol_strcollUTF8(cached.collator.get(), Utf8(left).c_str(), -1, Utf8(right).c_str(), -1,
                            &error);
}

}  // namespace platform
