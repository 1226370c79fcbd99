#pragma once

#include "base/KorExport.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

/// One run of the editor with all that is there once for the whole of it: the open databases, what the trees
/// show, who is asked and told, and what waits to be done. Each room keeps its own part here, and the doors
/// of the rooms (`StyleDatabases::current`, `KorDSMDialogFactory::getDSMDataStructure` and the others) ask
/// the current session for theirs.
///
/// Sessions follow each other or stand side by side. What was made while one was current (factories, windows,
/// databases) is used while it is current, and goes before it. Without any there is one of the process, which
/// begins when it is asked for. Used only from the host's user-interface thread.
class EditorSession {
public:
    /// Begins a session, which is the current one until it ends or another one becomes current.
    DETAILSTYLES_API EditorSession();
    /// Ends it with all of its parts, those first that were made last. The one before is current again.
    DETAILSTYLES_API ~EditorSession();
    EditorSession(const EditorSession&) = delete;
    EditorSession& operator=(const EditorSession&) = delete;

    /// The session that the doors work on.
    DETAILSTYLES_API static EditorSession& current();

    /// Makes a session the current one for its lifetime, then the one before again.
    class DETAILSTYLES_API Use {
    public:
        explicit Use(EditorSession& session);
        ~Use();
        Use(const Use&) = delete;
        Use& operator=(const Use&) = delete;

    private:
        EditorSession* m_session;
    };

    /// The call as one to be made later: it runs with this session as the current one, or, when the session
    /// has ended by then, not at all.
    std::function<void()> forLater(std::function<void()> call) const;

    /// The session's part of this type, made by its default constructor when it is first asked for; it lasts
    /// as long as the session.
    template <typename Part>
    Part& part() {
        static const std::size_t slot = nextSlot();
        if (slot < m_parts.size() && m_parts[slot])
            return static_cast<Holder<Part>&>(*m_parts[slot]).part;
        auto made = std::make_unique<Holder<Part>>(); // may ask for other parts, which are older then
        Part& part = made->part;
        keep(slot, std::move(made));
        return part;
    }

    /// The part of the current session.
    template <typename Part>
    static Part& currentPart() {
        return current().part<Part>();
    }

private:
    struct AnyHolder {
        virtual ~AnyHolder() = default;
    };
    template <typename Part>
    struct Holder : AnyHolder {
        Part part;
    };

    static std::size_t nextSlot();
    void keep(std::size_t slot, std::unique_ptr<AnyHolder> holder);

    std::vector<std::unique_ptr<AnyHolder>> m_parts; // by the slot of their type
    std::vector<std::size_t> m_order;                // slots, the latest part last
    std::shared_ptr<EditorSession*> m_lasting;       // gone when the session has ended
};
