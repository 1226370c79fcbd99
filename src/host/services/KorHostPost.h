#pragma once

#include <functional>

/// What must happen later: the program hands such calls to its event loop.
namespace KorHostPost {

using Post = std::function<void(std::function<void()>)>;

/// Sets who runs the posted calls of the current session. Without anybody they run at once.
void setPost(Post post);
/// The call runs later in the session that is current now, unless that has ended by then.
void post(std::function<void()> call);

} // namespace KorHostPost
