#include "session/KorDSMImport.h"

#include "data/StyleDatabases.h"
#include "operations/KorODBCDetailStyleExports.h"

using Exports = KorODBCDetailStyleExports;

KorDSMImport::KorDSMImport(const KorString& file) : m_file(file) {
    Exports::EnableAdvancedDeepCopyMode(1);
    if (const int result = Exports::openFile(file); result != Exports::kDone)
        Exports::GetErrorMessage(m_error, result);
}

KorDSMImport::~KorDSMImport() {
    Exports::deleteCache(0);
    Exports::EnableAdvancedDeepCopyMode(0);
}

std::vector<KorDSMDeepCopy::Choice> KorDSMImport::styles() const {
    return KorDSMDeepCopy::choicesOf(SourceId::exchange(),
                                     KorDSMFamilies::section(KorDSMDefines::kViewDetailStyles));
}

KorDSMDeepCopy::Wish KorDSMImport::wishFor(SourceId to) const {
    KorDSMDeepCopy::Wish wish{SourceId::exchange(), to, {}};
    for (const KorDSMDeepCopy::Choice& style : styles())
        wish.records.push_back(style.row);
    wish.label = Exports::labelOfImport(m_file);
    return wish;
}

std::vector<std::string> KorDSMImport::problems() const {
    std::vector<std::string> sentences;
    if (StyleSource* source = StyleDatabases::current().source(SourceId::exchange()))
        for (const ReadProblem& problem : source->problems())
            sentences.push_back(problem.sentence);
    return sentences;
}
