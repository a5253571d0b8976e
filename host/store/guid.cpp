#include "host/store/guid.h"

#include <sodium.h>

#include <array>
#include <stdexcept>

namespace tolvex::store {

std::string newGuid() {
  static const bool ready = sodium_init() >= 0;
  if (!ready) throw std::runtime_error("no source of random numbers");
  std::array<unsigned char, 16> bytes{};
  randombytes_buf(bytes.data(), bytes.size());
  bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0F) | 0x40);
  bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3F) | 0x80);
  std::array<char, 33> hex{};
  sodium_bin2hex(hex.data(), hex.size(), bytes.data(), bytes.size());
  const std::string digits(hex.data());
  return digits.substr(0, 8) + '-' + digits.substr(8, 4) + '-' + digits.substr(12, 4) + '-' +
         digits.substr(16, 4) + '-' + digits.substr(20);
}

}  // namespace tolvex::store
