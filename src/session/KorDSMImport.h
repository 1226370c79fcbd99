#pragma once

#include "session/KorDSMDeepCopy.h"

/// An exchange file that is open for import: which styles it has, and the wish to bring them, which is tried
/// and done as any copy from source to source.
class KorDSMImport {
public:
    /// Opens the file after a check for damage; see `error`.
    explicit KorDSMImport(const KorString& file);
    /// Closes it.
    ~KorDSMImport();
    KorDSMImport(const KorDSMImport&) = delete;
    KorDSMImport& operator=(const KorDSMImport&) = delete;

    const KorString& file() const { return m_file; }
    /// Why the file could not be opened; empty when it is open.
    const KorString& error() const { return m_error; }
    /// Its detail styles in their categories.
    std::vector<KorDSMDeepCopy::Choice> styles() const;
    /// All styles, into a source that may be edited.
    KorDSMDeepCopy::Wish wishFor(SourceId to) const;
    /// Values that are taken although they are outside of their range, one sentence each.
    std::vector<std::string> problems() const;

private:
    KorString m_file;
    KorString m_error;
};
