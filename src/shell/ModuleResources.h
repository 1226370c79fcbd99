#pragma once

#include "base/KorString.h"

/// Connects the module with its resources: pictures, templates, help, and the settings in which windows keep
/// their placements.
namespace ModuleResources {

/// `folder` names the resources; empty leaves the folder that is current. Repeated calls do no harm.
void setUp(const KorString& folder);

} // namespace ModuleResources
