#pragma once

class QWidget;

/// Windows on small screens, and on those where everything is drawn large.
namespace KorScreenFit {

/// Makes a window that is shown no larger than its screen has room for; its lists give way first, down to a
/// few rows.
void fit(QWidget& window);

} // namespace KorScreenFit
