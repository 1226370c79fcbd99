#pragma once

#include "base/KorString.h"

#include <array>
#include <vector>

class QWidget;

/// Asks what shall become of changes. Shows what they did, the latest first: a few of them, and all in its
/// details where there are more. The buttons have the texts "DSM" of `buttons`; the first is the default, the
/// last is what Esc chooses. Returns the place of the button that was chosen.
int askAboutChanges(QWidget* parent, const KorString& caption, const KorString& question,
                    const std::vector<KorString>& steps, const std::array<int, 3>& buttons);
