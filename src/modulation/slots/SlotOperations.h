#pragma once

#include <vector>

#include "modulation/matrix/ModulationController.h"

// What is done with whole slots, on either half's controller. Each is one update bracket, and what
// stays as it was is not set. All [ui] for the controller of the parameters.

namespace cinder::slots {

/// Puts a connection at the controller's default level into a free slot and answers with the slot;
/// -1 if none is free, and nothing has changed.
int addSlot(ModulationMatrix::Controller& controller, int source, int target);

/// Source, target, level and both switches of `to` become those of `from`.
void copySlot(ModulationMatrix::Controller& controller, int from, int to);

/// The two change places, and whatever modulates the level of one follows it.
void swapSlots(ModulationMatrix::Controller& controller, int a, int b);

/// Sorts the first `count` slots by source, those of one source by target, none last; equal slots
/// keep their order. Answers with the place to which slot `selected` has gone. Where slots of one
/// source modulate each other's levels their targets change as they move, and are compared as they
/// stand at that moment: no order need be the right one then.
int sortSlots(ModulationMatrix::Controller& controller, int count, int selected);

/// Takes all fields from the slot, and from those that modulate its level, since their target is
/// gone, and from those that modulate theirs. `out` gets each of them, in the order in which they
/// were cleared; slots that stand in it already are left alone.
void clearSlot(ModulationMatrix::Controller& controller, int slot, std::vector<int>& out);
/// All slots aimed at the target, as `clearSlot`.
void clearTarget(ModulationMatrix::Controller& controller, int target, std::vector<int>& out);
/// All slots of the source, and all that are aimed at targets which it owns, as `clearSlot`.
void clearSource(ModulationMatrix::Controller& controller, int source, std::vector<int>& out);

}  // namespace cinder::slots
