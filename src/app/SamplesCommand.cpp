#include "app/Commands.h"
#include "app/Console.h"
#include "base/Translation.h"
#include "data/text/SampleData.h"
#include "services/KorResources.h"
#include "session/DataFolder.h"

int samplesCommand(DataFolder& folder, const SamplesOptions& options) {
    const std::string target = options.folder.empty() ? folder.path().string() : options.folder;
    const Result<> result = buildSampleData(KorResources::folder().string(), target);
    if (result)
        Console::sayStored(KorString::format(translated("The sample databases are in \"%s\"."), {target}));
    else
        Console::complain(result.error);
    return result ? kExitDone : kExitFailed;
}
