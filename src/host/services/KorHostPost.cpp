#include "services/KorHostPost.h"

#include <utility>

namespace KorHostPost {

namespace {
Post g_post;
}

void setPost(Post newPost) {
    g_post = std::move(newPost);
}

void post(std::function<void()> call) {
    if (g_post)
        g_post(std::move(call));
    else
        call();
}

} // namespace KorHostPost
