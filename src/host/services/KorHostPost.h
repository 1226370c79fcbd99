#pragma once

#include <functional>

/// What must happen later: the program hands such calls to its event loop.
namespace KorHostPost {

using Post = std::function<void(std::function<void()>)>;

/// Sets who runs posted calls. Without anybody they run at once.
void setPost(Post post);
void post(std::function<void()> call);

} // namespace KorHostPost
