#include <windows.h>

#include <cstdint>
#include <cstdlib>
#include <limits>

int WINAPI MulDiv(int number, int numerator, int denominator) {
  if (denominator == 0) return -1;
  const std::int64_t product = std::int64_t{number} * numerator;
  const std::int64_t divisor = denominator;
  // Halves are rounded away from zero.
  const std::int64_t size = (std::abs(product) + std::abs(divisor) / 2) / std::abs(divisor);
  const std::int64_t quotient = (product < 0) == (divisor < 0) ? size : -size;
  const bool fits =
      quotient >= std::numeric_limits<int>::min() && quotient <= std::numeric_limits<int>::max();
  return fits ? static_cast<int>(quotient) : -1;
}
