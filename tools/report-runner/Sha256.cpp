#include "tools/report-runner/Sha256.h"

#include <array>
#include <bit>
#include <cstdint>
#include <fstream>

namespace qva {
namespace {

// The first 32 bits of the fractional parts of the cube roots of the first 64 primes.
constexpr std::array<std::uint32_t, 64> kRounds = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

constexpr std::size_t kBlock = 64;  // bytes

class Hash {
 public:
  void Add(std::string_view bytes) {
    length_ += bytes.size();
    for (const char byte : bytes) {
      block_[filled_++] = static_cast<unsigned char>(byte);
      if (filled_ == kBlock) Mix();
    }
  }

  std::string End() {
    const std::uint64_t bits = length_ * 8;
    Add("\x80");
    while (filled_ != kBlock - 8) Add(std::string_view("\0", 1));
    for (int shift = 56; shift >= 0; shift -= 8) {
      const char byte = static_cast<char>(bits >> shift);
      Add({&byte, 1});
    }
    std::string text;
    for (const std::uint32_t word : state_) {
      for (int shift = 28; shift >= 0; shift -= 4) text += "0123456789abcdef"[word >> shift & 15];
    }
    return text;
  }

 private:
  void Mix() {
    std::array<std::uint32_t, 64> words{};
    for (std::size_t n = 0; n < 16; ++n) {
      for (std::size_t byte = 0; byte < 4; ++byte) words[n] = words[n] << 8 | block_[n * 4 + byte];
    }
    for (std::size_t n = 16; n < words.size(); ++n) {
      const std::uint32_t a = words[n - 15], b = words[n - 2];
      words[n] = words[n - 16] + words[n - 7] + (std::rotr(a, 7) ^ std::rotr(a, 18) ^ a >> 3) +
                 (std::rotr(b, 17) ^ std::rotr(b, 19) ^ b >> 10);
    }
    auto [a, b, c, d, e, f, g, h] = state_;
    for (std::size_t n = 0; n < words.size(); ++n) {
      const std::uint32_t one = h + (std::rotr(e, 6) ^ std::rotr(e, 11) ^ std::rotr(e, 25)) +
                                ((e & f) ^ (~e & g)) + kRounds[n] + words[n];
      const std::uint32_t two =
          (std::rotr(a, 2) ^ std::rotr(a, 13) ^ std::rotr(a, 22)) + ((a & b) ^ (a & c) ^ (b & c));
      h = g;
      g = f;
      f = e;
      e = d + one;
      d = c;
      c = b;
      b = a;
      a = one + two;
    }
    const std::uint32_t mixed[] = {a, b, c, d, e, f, g, h};
    for (std::size_t n = 0; n < state_.size(); ++n) state_[n] += mixed[n];
    filled_ = 0;
  }

  std::array<std::uint32_t, 8> state_ = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                         0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
  std::array<unsigned char, kBlock> block_{};
  std::size_t filled_ = 0;
  std::uint64_t length_ = 0;
};

}  // namespace

std::string Sha256(std::string_view bytes) {
  Hash hash;
  hash.Add(bytes);
  return hash.End();
}

std::string Sha256OfFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return {};
  Hash hash;
  std::array<char, 1 << 16> bytes{};
  do {
    file.read(bytes.data(), bytes.size());
    hash.Add({bytes.data(), static_cast<std::size_t>(file.gcount())});
  } while (file);
  return file.bad() ? std::string() : hash.End();
}

}  // namespace qva
