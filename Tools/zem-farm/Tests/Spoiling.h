#pragma once

#include "Participant.h"

namespace ZemFarm
{

/// What a faulty engine would do: changes the document of a client without telling anybody.
void spoilDocument(const Participant& participant);

/// From now on there is a generator "spoil" that spoils its author's document. It is for texts, has no weight, and so
/// is never picked by chance.
void addSpoilingGenerator();

/// The same for "smuggle", which sets a property of a paragraph that its author alone has then, and for "drop", which
/// takes this paragraph away again.
void addSmugglingGenerators();

/// Appends a paragraph to the main text without telling anybody.
void smuggleParagraph(const Zem::DOM::Document& document);

/// The same for "stumble", which executes an operation that fails, and keeps that to itself.
void addStumblingGenerator();

/// The same for "refuse", which fails as an operation does that no document takes.
void addFailingGenerator();

} // namespace ZemFarm
