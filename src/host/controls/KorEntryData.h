#pragma once

#include "base/KorAssert.h"

#include <any>
#include <cstddef>
#include <cstdint>

/// What a caller attaches to an entry, row or page of a control, which never touches it: an object of the
/// caller's own, which is not owned, or the key of a record. It is read back as what it was attached as.
class KorEntryData {
public:
    KorEntryData() = default;
    KorEntryData(std::nullptr_t) {}
    /// Null attaches nothing.
    template <typename T>
    KorEntryData(T* object) {
        if (object)
            m_content = object;
    }
    explicit KorEntryData(std::int32_t key) : m_content(key) {}

    explicit operator bool() const { return m_content.has_value(); }

    /// The object; null where nothing is attached. Something of another type is reported, and null too.
    template <typename T>
    T* as() const {
        T* const* object = std::any_cast<T*>(&m_content);
        KorAssert::check(object || !*this, "what is attached is of this type");
        return object ? *object : nullptr;
    }
    /// The key; 0 where none is attached.
    std::int32_t key() const {
        const auto* attached = std::any_cast<std::int32_t>(&m_content);
        return attached ? *attached : 0;
    }

private:
    std::any m_content;
};
