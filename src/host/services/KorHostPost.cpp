#include "services/KorHostPost.h"

#include "base/EditorSession.h"

#include <utility>

namespace KorHostPost {

namespace {

struct PostedCalls {
    Post run;
};

} // namespace

void setPost(Post post) {
    EditorSession::currentPart<PostedCalls>().run = std::move(post);
}

void post(std::function<void()> call) {
    EditorSession& session = EditorSession::current();
    if (const Post& run = session.part<PostedCalls>().run)
        run(session.forLater(std::move(call)));
    else
        call();
}

} // namespace KorHostPost
