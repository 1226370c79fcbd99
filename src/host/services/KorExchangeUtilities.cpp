#include "services/KorExchangeUtilities.h"

#include <limits>

double KorExchangeQueue::getDouble(const KorString& name) const {
    const auto it = m_values.find(name);
    if (it == m_values.end())
        return 0.0;
    if (const int* whole = std::get_if<int>(&it->second))
        return *whole;
    const double* real = std::get_if<double>(&it->second);
    return real ? *real : 0.0;
}

int KorExchangeQueue::getInt(const KorString& name) const {
    const double value = getDouble(name);
    const bool fits = value >= std::numeric_limits<int>::min() && value <= std::numeric_limits<int>::max();
    return fits ? static_cast<int>(value) : 0;
}

KorString KorExchangeQueue::getString(const KorString& name) const {
    const auto it = m_values.find(name);
    const KorString* text = it == m_values.end() ? nullptr : std::get_if<KorString>(&it->second);
    return text ? *text : KorString();
}

KorExchangeQueue& KorExchangeUtilities::getNamedQueue(const KorString& name, int& status, int) {
    static std::map<KorString, KorExchangeQueue> queues;
    status = 1;
    return queues[name];
}
