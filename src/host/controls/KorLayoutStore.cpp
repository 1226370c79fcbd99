#include "controls/KorLayoutStore.h"

#include "base/EditorSession.h"

#include <unordered_map>

namespace {

struct Backend {
    KorLayoutStore::Reader reader;
    KorLayoutStore::Writer writer;
    std::unordered_map<KorString, KorString> kept;
};

Backend& backend() {
    return EditorSession::currentPart<Backend>();
}

} // namespace

void KorLayoutStore::setBackend(Reader reader, Writer writer) {
    backend().reader = std::move(reader);
    backend().writer = std::move(writer);
}

KorString KorLayoutStore::read(const KorString& name) {
    if (backend().reader)
        return backend().reader(name);
    const auto kept = backend().kept.find(name);
    return kept == backend().kept.end() ? KorString() : kept->second;
}

void KorLayoutStore::write(const KorString& name, const KorString& value) {
    if (backend().writer)
        backend().writer(name, value);
    else
        backend().kept[name] = value;
}
