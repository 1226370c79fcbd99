#pragma once

#include "records/KorDSNDefinitions.h"

/// Gives source pairs their numbers and tells which one is current.
class KorDSNManager {
public:
    static KorDSNManager& getInstance();

    /// The index of installed add-in number i (from 0).
    eIndex getAddInIdx(int i) const { return SourceId::addIn(i).index; }
    eDSN getCurrentDSN() const;
    eIndex getCurrentIndex() const;
};

/// Makes a source current for its lifetime and restores the previous one when it ends.
class KorDSNRequest {
public:
    KorDSNRequest(eDSN dsn, eIndex index);
    virtual ~KorDSNRequest();
    KorDSNRequest(const KorDSNRequest&) = delete;
    KorDSNRequest& operator=(const KorDSNRequest&) = delete;

private:
    SourceId m_previous;
};
