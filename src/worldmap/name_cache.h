#pragma once

#include <QString>
#include <array>
#include <cstddef>
#include <cstdint>

/// Remembers what was last found for the names in a map's cells. Looking a name up can cost more
/// than all that is then done with it; but most cells of one tile share one text in memory, and by
/// its address a find is remembered. The texts must stay as they are while the cache is used.
template <typename Value>
class NameCache
{
public:
    /// The value of a name, which `lookUp` gives when it isn't remembered.
    template <typename LookUp>
    const Value& find(const QString& name, const LookUp& lookUp)
    {
        const QChar* const text = name.constData();
        Entry& entry = recent_[reinterpret_cast<std::uintptr_t>(text) / alignof(std::max_align_t) %
                               recent_.size()];
        if (entry.text != text)
            entry = {text, lookUp(name)};
        return entry.value;
    }

private:
    struct Entry {
        const QChar* text = nullptr;
        Value value{};
    };
    std::array<Entry, 64> recent_;
};
