#pragma once

#include "base/KorExport.h"

#include <atomic>
#include <compare>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <new>
#include <string>
#include <string_view>

/// Unicode text. It holds UTF-8 in a shared, immutable buffer: records with many texts are copied from
/// tables into tree items and back, and such a copy costs one counter instead of an allocation per text.
/// Wide characters come and go through `fromWide` and `toWide`.
class DETAILSTYLES_API KorString {
public:
    KorString() noexcept = default;
    KorString(const char* utf8) : KorString(std::string_view(utf8 ? utf8 : "")) {}
    KorString(std::string_view utf8) : m_block(utf8.empty() ? nullptr : Block::make(utf8)) {}
    KorString(const std::string& utf8) : KorString(std::string_view(utf8)) {}
    KorString(const KorString& other) noexcept : m_block(other.m_block) {
        if (m_block)
            m_block->refs.fetch_add(1, std::memory_order_relaxed);
    }
    KorString(KorString&& other) noexcept : m_block(other.m_block) { other.m_block = nullptr; }
    KorString& operator=(KorString other) noexcept {
        std::swap(m_block, other.m_block);
        return *this;
    }
    ~KorString() {
        if (m_block && m_block->refs.fetch_sub(1, std::memory_order_acq_rel) == 1)
            Block::free(m_block);
    }

    static KorString fromWide(std::wstring_view wide);
    std::wstring toWide() const;

    /// The text as UTF-8. Valid as long as this object is neither assigned nor destroyed.
    std::string_view view() const noexcept {
        return m_block ? std::string_view(m_block->text(), m_block->size) : std::string_view();
    }
    const char* c_str() const noexcept { return m_block ? m_block->text() : ""; }
    std::string toStdString() const { return std::string(view()); }

    bool isEmpty() const noexcept { return !m_block; }
    /// Length in bytes of UTF-8.
    std::size_t size() const noexcept { return m_block ? m_block->size : 0; }

    /// -1, 0 or 1 by the order of code points, case-sensitive.
    int compare(const KorString& other) const noexcept {
        const int order = view().compare(other.view());
        return (order > 0) - (order < 0);
    }
    bool operator==(const KorString& other) const noexcept {
        return m_block == other.m_block || view() == other.view();
    }
    std::strong_ordering operator<=>(const KorString& other) const noexcept { return compare(other) <=> 0; }

    KorString operator+(const KorString& other) const;

    /// Without blanks, tabs and line breaks at both ends.
    KorString trimmed() const;
    /// Each code point in lower case, as Unicode has it, whatever the locale.
    KorString lowered() const;
    /// Every occurrence of `what` replaced; an empty `what` replaces nothing.
    KorString replaced(const KorString& what, const KorString& with) const;

    /// Puts `arguments` in the places of the %s and %d of `pattern`, in order; %% is a percent sign.
    /// A placeholder without an argument stays as it stands, surplus arguments are dropped: a translated
    /// pattern can be wrong, but never harm.
    static KorString format(const KorString& pattern, std::initializer_list<KorString> arguments);

    static KorString number(std::int64_t value) { return KorString(std::to_string(value)); }

private:
    struct Block {
        std::atomic<std::uint32_t> refs;
        std::uint32_t size;

        char* text() { return reinterpret_cast<char*>(this + 1); }
        static Block* make(std::string_view utf8) {
            void* memory = ::operator new(sizeof(Block) + utf8.size() + 1);
            auto* block = new (memory) Block{1, static_cast<std::uint32_t>(utf8.size())};
            std::memcpy(block->text(), utf8.data(), utf8.size());
            block->text()[utf8.size()] = '\0';
            return block;
        }
        static void free(Block* block) {
            block->~Block();
            ::operator delete(block);
        }
    };

    Block* m_block = nullptr;
};

template <>
struct std::hash<KorString> {
    std::size_t operator()(const KorString& text) const noexcept {
        return std::hash<std::string_view>{}(text.view());
    }
};
