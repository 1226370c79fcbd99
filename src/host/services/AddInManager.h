#pragma once

#include "base/KorAddInId.h"
#include "base/KorArray.h"

#include <filesystem>
#include <set>
#include <string>
#include <vector>

/// What an add-in says of itself for the country of the installation.
struct KorAddInInfo {
    KorString name; ///< shown to users
    KorString country;

    bool isValid() const { return !name.isEmpty(); }
};

/// One installed add-in: a folder with `addin.ini` (name, icon, country) and its style database
/// `styles.dsdb`. Without a name of its own it is called as its folder.
class KorAddIn {
public:
    /// Absolute name of the picture file shown beside the add-in; empty when it brings none.
    KorString getIcon() const { return KorString(m_icon.string()); }
    const KorAddInInfo& info() const { return m_info; }
    const std::filesystem::path& database() const { return m_database; }
    const KorAddInId& id() const { return m_id; }

private:
    friend class AddInManager;
    KorAddInId m_id;
    KorAddInInfo m_info;
    std::filesystem::path m_icon;
    std::filesystem::path m_database;
};

/// The add-ins that are installed, in the order of their folders' names.
class AddInManager {
public:
    /// That of the current session.
    static AddInManager& getInstance();

    /// Looks for add-ins in the folder `addins` of a data folder. An add-in without its `addin.ini` or its
    /// database is left out and reported, unless its name, in lower case, is among those whose database is
    /// `elsewhere`.
    void scan(const std::filesystem::path& dataFolder, const std::set<std::string>& elsewhere = {});
    /// Puts a style database that is no add-in behind them, under its file's name, until the next scan.
    void addFile(const std::filesystem::path& database);
    const std::vector<KorAddIn>& addIns() const { return m_addIns; }
    /// The add-in, or one without icon and name when it is not installed.
    const KorAddIn& getAddIn(const KorAddInId& id) const;
    /// Picture file of the installation's own flag, as named below the resources.
    KorString getCurrentInstalationFlag() const { return "icons/standard.svg"; }

private:
    bool read(const std::filesystem::path& folder, KorAddIn& addIn,
              const std::set<std::string>& elsewhere) const;

    std::vector<KorAddIn> m_addIns;
};

/// What other modules see of the add-in manager.
class AddInManagerInterface {
public:
    static AddInManagerInterface& getInstance();

    void getInstalledAddIns(KorArray<KorAddInId>& ids) const;
    /// Not valid when the add-in is not installed.
    KorAddInInfo getInstalledCountryAddInInfo(const KorAddInId& id) const;
};
