#include "session/KorDSMSampleParts.h"

#include "base/EditorSession.h"
#include "drawing/SampleParts.h"
#include "drawing/SuitingPart.h"

#include <algorithm>
#include <map>

namespace {

// The files of a folder as they were when they were read, and what was read.
struct FolderOfParts {
    std::map<std::string, std::filesystem::file_time_type> files;
    std::shared_ptr<KorDSMSampleParts> parts;
};

struct SharedParts {
    std::map<std::filesystem::path, FolderOfParts> byFolder;
};

std::map<std::string, std::filesystem::file_time_type> filesIn(const std::filesystem::path& folder) {
    std::map<std::string, std::filesystem::file_time_type> files;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folder, error))
        files[entry.path().filename().string()] = entry.last_write_time(error);
    return files;
}

} // namespace

std::shared_ptr<KorDSMSampleParts> KorDSMSampleParts::ofSession(const std::filesystem::path& folder) {
    FolderOfParts& shared = EditorSession::currentPart<SharedParts>().byFolder[folder];
    if (auto files = filesIn(folder); !shared.parts || files != shared.files)
        shared = {std::move(files), std::make_shared<KorDSMSampleParts>(folder)};
    return shared.parts;
}

std::vector<std::string> KorDSMSampleParts::names() const {
    return SampleParts::names(m_folder);
}

void KorDSMSampleParts::read() {
    if (m_all)
        return;
    m_all.emplace();
    for (const std::string& name : names()) {
        Result<SamplePart> part = SampleParts::read(m_folder, name);
        if (part)
            m_all->push_back({name, std::make_shared<const SamplePart>(std::move(part.value)),
                              std::make_shared<SeenLines>()});
        else
            m_problems.push_back(part.error);
    }
}

const std::vector<KorDSMSampleParts::Entry>& KorDSMSampleParts::all() {
    read();
    return *m_all;
}

const KorDSMSampleParts::Entry* KorDSMSampleParts::find(const std::string& name) {
    read();
    const auto found = std::ranges::find(*m_all, name, &Entry::name);
    return found == m_all->end() ? nullptr : &*found;
}

const std::vector<std::string>& KorDSMSampleParts::problems() {
    read();
    return m_problems;
}

std::string KorDSMSampleParts::suiting(StyleSource& source, std::int32_t style) {
    std::vector<OfferedPart> parts;
    for (const Entry& entry : all())
        parts.push_back({entry.name, entry.part.get()});
    return suitingPart(source, style, parts);
}
