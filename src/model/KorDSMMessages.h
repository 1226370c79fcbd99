#pragma once

#include "base/KorString.h"
#include "base/KorTreeHandle.h"
#include "model/KorDSMDefines.h"
#include "model/KorDSMRowChange.h"
#include "model/items/KorDSMTreeItemData.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>

/// The numbered messages by which parts of the editor that don't know each other talk. The list is closed:
/// every message is a type below, with its number and its payload, has a sender, and a receiver that
/// registered for its type. All go to the main dialog's window, except the list-change notice, which goes
/// from page to page.
struct KorMessage {
    explicit KorMessage(int messageNumber) : number(messageNumber) {}
    virtual ~KorMessage() = default;

    const int number;
};

/// Base of a message type with a fixed number.
template <int Number>
struct KorNumberedMessage : KorMessage {
    static constexpr int kNumber = Number;
    KorNumberedMessage() : KorMessage(Number) {}
};

inline constexpr int WM_USER = 1024;

// From tree items: what the tree has to do with an item's entry.

struct DsmDeleteEntry : KorNumberedMessage<WM_USER> {
    KorTreeHandle entry = nullptr;
};
/// The placeholder that shows that an entry can be opened.
struct DsmInsertPlaceholder : KorNumberedMessage<WM_USER + 1> {
    KorTreeHandle entry = nullptr; ///< the parent
    KorString text;
};
struct DsmCollapseEntry : KorNumberedMessage<WM_USER + 2> {
    KorTreeHandle entry = nullptr;
};
struct DsmSetEntryText : KorNumberedMessage<WM_USER + 3> {
    KorTreeHandle entry = nullptr;
    KorString text;
};
/// Attaches item data to an entry. The first receiver to take `data` owns it.
struct DsmAttachItemData : KorNumberedMessage<WM_USER + 4> {
    KorTreeHandle entry = nullptr;
    mutable std::unique_ptr<KorDSMTreeItemData> data;
};

// From pages and dialogs.

/// Go to a child of a tree entry.
struct DsmGoToChild : KorNumberedMessage<WM_USER + 5> {
    KorTreeHandle entry = nullptr;
    int childIndex = 0;
    int flag = 1;
};
/// Progress of a longer step, shown in the status bar.
struct DsmProgress : KorNumberedMessage<WM_USER + 11> {
    enum eState : int { kStart = 0, kStep = 1, kDone = 2 };
    eState state = kStart;
    int percent = 0;
    int range = 100;
    KorString text;
};
/// A page changed which rows there are, or their places: trees and lists are to show them.
struct DsmRowsChanged : KorNumberedMessage<WM_USER + 25> {
    std::vector<KorDSMRowChange> changes;
};
/// A page wants the record to be shown; nothing happens where no entry stands for it.
struct DsmGoToRecord : KorNumberedMessage<WM_USER + 26> {
    SourceId source;
    RowRef row;
    int column = 0; ///< of the field to be shown, where the record is edited; 0: the record itself
    RowRef within;  ///< below which the record is looked for first, with a column
};
/// A write succeeded: changes are pending.
struct DsmDataChanged : KorNumberedMessage<WM_USER + 13> {};
/// The categories of a view request changed.
struct DsmCategoriesChanged : KorNumberedMessage<WM_USER + 15> {
    KorDSMDatabaseItem* item = nullptr;
};
/// The selection of the main tree changed. The entry may be gone when this comes.
struct DsmSelectionChanged : KorNumberedMessage<WM_USER + 17> {
    KorTreeHandle entry = nullptr;
};
/// Enable or disable Apply.
struct DsmSetModified : KorNumberedMessage<WM_USER + 18> {
    bool modified = true;
};
/// Mark the other pages of the group modified and due for refresh.
struct DsmMarkOtherPages : KorNumberedMessage<WM_USER + 20> {
    bool modified = true;
};
/// List-change notice from a page to its linked pages.
struct DsmListChanged : KorNumberedMessage<WM_USER + 21> {
    enum eAction : int { kAdded = 0, kRenamed = 1, kReload = 3 };
    int senderPageCode = 0;
    int action = kAdded;
    KorString name;
};
/// Set a check mark of the options menu.
struct DsmSetOptionCheck : KorNumberedMessage<WM_USER + 22> {
    int index = 0;
    bool value = false;
};

/// A sentence for the user waits in the host report.
struct DsmReportWaits : KorNumberedMessage<WM_USER + 24> {};

/// Receives messages: the main dialog, pages, and what tests put in their place.
class KorMessageTarget {
public:
    virtual ~KorMessageTarget() = default;
    virtual void onMessage(const KorMessage& message) = 0;
};

/// A target that hands each message to the function that was registered for its type. What nobody
/// registered for is dropped.
class KorMessageReceivers : public KorMessageTarget {
public:
    void onMessage(const KorMessage& message) override;

protected:
    /// `handle` gets the messages of this type from now on, in place of what got them before.
    template <typename Message>
    void receive(std::function<void(const Message&)> handle) {
        m_receivers[Message::kNumber] = [handle = std::move(handle)](const KorMessage& message) {
            handle(static_cast<const Message&>(message));
        };
    }

private:
    std::map<int, std::function<void(const KorMessage&)>> m_receivers; // by number
};

/// The way to the main dialog's window, which the current session knows.
namespace KorDSMMainWindow {

/// The target: the one added last of those that are still there, or null while no editor is open. Not owned.
KorMessageTarget* get();
/// Makes `target` the one that messages go to, until it is removed or another one is added.
void add(KorMessageTarget* target);
/// Takes a target out, in any order; nothing happens when it is not there.
void remove(const KorMessageTarget* target);

/// Delivers at once. Without a target the message is dropped.
void sendMessage(const KorMessage& message);

void post(std::shared_ptr<const KorMessage> message);

/// Delivers with the event loop, when nothing is busy, to the target of this moment, if that is still there
/// then.
template <typename Message>
void postMessage(Message message) {
    post(std::make_shared<const Message>(std::move(message)));
}

} // namespace KorDSMMainWindow
