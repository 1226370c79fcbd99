#pragma once

#include "base/KorExport.h"
#include "base/KorString.h"

#include <map>
#include <variant>

/// A named queue: a small store of named values through which the host and its modules hand things over.
/// A value that is pushed replaces the one of the same name.
class DETAILSTYLES_API KorExchangeQueue {
public:
    void push(const KorString& name, int value) { m_values[name] = value; }
    void push(const KorString& name, double value) { m_values[name] = value; }
    void push(const KorString& name, const KorString& value) { m_values[name] = value; }

    /// The value as this type (numbers convert); 0 or empty when there is none, or none that fits.
    int getInt(const KorString& name) const;
    double getDouble(const KorString& name) const;
    KorString getString(const KorString& name) const;
    bool has(const KorString& name) const { return m_values.contains(name); }
    /// Takes a value out; nothing happens when there is none.
    void remove(const KorString& name) { m_values.erase(name); }
    void clear() { m_values.clear(); }

private:
    std::map<KorString, std::variant<int, double, KorString>> m_values;
};

class DETAILSTYLES_API KorExchangeUtilities {
public:
    /// The queue of this name, made when it does not exist; kept for the life of the process. `status`
    /// becomes 1. `flags` is kept for callers and has no meaning.
    static KorExchangeQueue& getNamedQueue(const KorString& name, int& status, int flags);
};
