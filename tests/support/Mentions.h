#pragma once

#include <string>

inline bool mentions(const std::string& sentence, const std::string& phrase) {
    return sentence.find(phrase) != std::string::npos;
}
