#include "base/EditorSession.h"

#include <algorithm>
#include <utility>

namespace {

// The last one is current. A session stands in it once from its beginning, and once for each use.
std::vector<EditorSession*>& sessions() {
    static std::vector<EditorSession*> begun;
    return begun;
}

void eraseLast(const EditorSession* session) {
    const auto it = std::find(sessions().rbegin(), sessions().rend(), session);
    if (it != sessions().rend())
        sessions().erase(std::next(it).base());
}

} // namespace

EditorSession::EditorSession() : m_lasting(std::make_shared<EditorSession*>(this)) {
    sessions().push_back(this);
}

EditorSession::~EditorSession() {
    m_lasting.reset();
    {
        const Use ending(*this);
        while (!m_order.empty()) {
            const std::unique_ptr<AnyHolder> last = std::move(m_parts[m_order.back()]);
            m_order.pop_back();
        }
    }
    std::erase(sessions(), this);
}

EditorSession& EditorSession::current() {
    if (!sessions().empty())
        return *sessions().back();
    static EditorSession ofTheProcess;
    return ofTheProcess;
}

EditorSession::Use::Use(EditorSession& session) : m_session(&session) {
    sessions().push_back(m_session);
}

EditorSession::Use::~Use() {
    eraseLast(m_session);
}

std::function<void()> EditorSession::forLater(std::function<void()> call) const {
    return [session = std::weak_ptr(m_lasting), call = std::move(call)] {
        const std::shared_ptr<EditorSession*> lasting = session.lock();
        if (!lasting)
            return;
        const Use use(**lasting);
        call();
    };
}

std::size_t EditorSession::nextSlot() {
    static std::size_t count = 0;
    return count++;
}

void EditorSession::keep(std::size_t slot, std::unique_ptr<AnyHolder> holder) {
    if (slot >= m_parts.size())
        m_parts.resize(slot + 1);
    m_parts[slot] = std::move(holder);
    m_order.push_back(slot);
}
