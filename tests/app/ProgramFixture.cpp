#include "app/ProgramFixture.h"

#include "data/text/TextForm.h"

#include <QProcess>

namespace fs = std::filesystem;

namespace {

// Two styles share the view "Front"; "Section" has one owner.
constexpr const char* kStyles = R"(
[base_category]
name
Beams

[view_request]
name    | scale
Front   | 1/10
Section | 1/5

[detail_style]
name       | description     | title_position | views
Beam       | Träger, einfach | 4              | Front; Section
Heavy beam |                 | 0              | Front

[detail_master]
name | detail_key | number | style | category
Beam | 1          | 1      | Beam  | Beams

[view_request_category]
name         | view_request | category
Front, filed | Front        | Beams

[length_clip]
name | interval
Long | 1000
)";

constexpr const char* kInches = R"(
[numeric_default]
name             | value
C01_DistanceUnit | 1
)";

void build(const fs::path& file, const std::string& text) {
    const fs::path source = file.parent_path() / (file.stem().string() + ".text");
    fs::create_directories(source);
    writeBytes(source / "all.txt", text);
    const Result<> result = buildDatabase(source.string(), file.string());
    ASSERT_TRUE(result) << result.error;
    fs::remove_all(source);
}

} // namespace

void ProgramTest::SetUp() {
    fs::create_directories(data() / "addins" / "bridges");
    build(data() / "standard.dsdb", kStyles);
    build(data() / "user.dsdb", kStyles);
    build(data() / "addins" / "bridges" / "styles.dsdb", std::string(kStyles) + kInches);
    writeBytes(data() / "addins" / "bridges" / "addin.ini", "name = Road Bridges\n");
    for (const auto& [variable, name] :
         {std::pair("XDG_CONFIG_HOME", "config"), {"XDG_DATA_HOME", "home"}, {"XDG_DATA_DIRS", "system"}})
        environment.insert(variable, named(name));
    environment.insert("LC_ALL", "C.UTF-8");
    environment.insert("LANG", "en_US.UTF-8");
    environment.remove("DETAILSTYLES_RESOURCES");
}

ProgramRun ProgramTest::run(const QStringList& arguments) {
    return runBare(QStringList{"--data", QString::fromStdString(data().string())} + arguments);
}

ProgramRun ProgramTest::runBare(const QStringList& arguments) {
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setChildProcessModifier(inChild);
    process.start(DETAILSTYLES_PROGRAM, arguments);
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError()).split('\n', Qt::SkipEmptyParts)};
}
