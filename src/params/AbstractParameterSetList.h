#pragma once

#include <string>
#include <utility>
#include <vector>

#include "params/AbstractParameterSetArray.h"
#include "params/PropPluginParameter.h"
#include "wave/Producer.h"

namespace cinder {

/// Sets of which the first n are in use. All exist at all times, so ids never move: who adds or
/// removes a set moves values between sets and changes n.
///
/// State   n, which is a parameter; an inactive set holds whatever was last put there, defaults
///         after a removal
/// Errors  none; an insertion into a full list and a removal at the minimum do nothing
class AbstractParameterSetList : public AbstractParameterSetArray {
public:
    /// The count of active sets. Producers that belong to a set run exactly while it is active.
    class NumActiveParameter final : public PropPluginParameter<int> {
    public:
        NumActiveParameter(GenericParameterOwner* owner, AbstractParameterSetList* list,
                           const std::string& listName, IndexRange range)
            : PropPluginParameter<int>(owner, "Num Active " + listName, range), list(list) {}

        void applyValue(float value) noexcept CINDER_REALTIME override;

    private:
        AbstractParameterSetList* const list;
    };

    /// `active` is the range of the count, whose maximum is the number of sets.
    AbstractParameterSetList(GenericParameterOwner* owner, const std::string& listName,
                             IndexRange active)
        : numActive(owner, this, listName, active), owner(owner) {}

    void collectParameters(std::vector<AbstractPluginParameter*>& parameters) override;
    bool containsId(int id) const override;
    /// The count stays as it is.
    void resetToDefaults() override;
    int firstId() const override { return numActive.getId(); }
    /// Closes the gap: later sets move down by one, and the last one gets its defaults. Extensions
    /// move along. [ui]
    virtual void removeSet(int index);
    /// Makes room at an index up to the count: the set there and all later ones move up by one. The
    /// new set is a copy of the one in front of it, so to insert behind a set is to double it; at
    /// the very front it keeps the values of the one that stood there. [ui]
    virtual void insertSet(int index);

    // Setting up, before audio runs. Nothing is owned.

    /// An array whose set i belongs to set i of this list.
    void addExtension(AbstractParameterSetArray* extension) { extensions.push_back(extension); }
    /// Producer i belongs to set i; null: this set has none. They are switched by the next
    /// `applyValue` of the count.
    void addProducers(std::vector<wave::Producer*> ofSets) {
        producers.push_back(std::move(ofSets));
    }

    int activeCount() const { return numActive.typedValue(); }

    NumActiveParameter numActive;

protected:
    GenericParameterOwner* const owner;

private:
    void copyWithExtensions(int from, int to);

    std::vector<AbstractParameterSetArray*> extensions;
    std::vector<std::vector<wave::Producer*>> producers;
};

}  // namespace cinder
