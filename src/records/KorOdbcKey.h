#pragma once

#include <compare>
#include <cstdint>

/// Key of one row inside one table of one source. A key of 0 or below means "no row". Keys mean nothing
/// outside their source: whatever crosses sources is matched by run name and content.
class KorOdbcKey {
public:
    constexpr KorOdbcKey() = default;
    constexpr KorOdbcKey(std::int32_t key) : m_key(key) {}

    constexpr std::int32_t getKey() const { return m_key; }
    constexpr void setKey(std::int32_t key) { m_key = key; }
    constexpr bool isValid() const { return m_key > 0; }
    constexpr operator std::int32_t() const { return m_key; }

private:
    std::int32_t m_key = -1;
};
