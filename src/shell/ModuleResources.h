#pragma once

#include "base/KorString.h"

#include <filesystem>

/// Connects the module with its resources: pictures, templates, help, and the settings in which windows keep
/// their placements.
namespace ModuleResources {

/// The folder with the resources of this module or program.
std::filesystem::path findFolder();

/// `folder` names the resources; empty leaves the folder that is current, or finds the module's own. Repeated
/// calls do no harm.
void setUp(const KorString& folder);

} // namespace ModuleResources
