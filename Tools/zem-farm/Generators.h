#pragma once

/// What makes random operations. Each generator makes one kind of them from the document as its author has it; a new
/// family of operations is a new source with a list of its generators, and a row in Generators.cpp.

#include "Participant.h"
#include "Random.h"

#include "Sharing/CS_DocumentKind.h"

#include <string>
#include <string_view>
#include <vector>

namespace ZemFarm
{

struct Generator
{
    /// As it stands in scripts and in the summary.
    const char* _name;
    /// How often it is picked, relative to the others.
    unsigned long _weight;
    bool (*_isFor)(DocumentKind kind);
    /// Executes operations of the author's. They are legal where they are made, though the document may change or
    /// refuse them. Fails: `InvalidEditError` where the text doesn't take an edit.
    void (*_make)(Participant& author, Random& random);
};

using Generators = std::vector<Generator>;

inline bool isForAll(DocumentKind)
{
    return true;
}

/// Whether documents of the kind have texts outside cells.
inline bool isForFreeTexts(DocumentKind kind)
{
    return kind != DocumentKind::Workbook;
}

Generators makeTextEdits();
Generators makeStyleChanges();
Generators makeRangeOperations();
Generators makeObjectInsertions();
Generators makeNodeProperties();
Generators makeDocumentChanges();
Generators makeUndoings();

const Generators& getGenerators();

/// Adds one of the caller's own, which no other may be named like. It is picked and found from now on.
void addGenerator(const Generator& generator);

/// Null if there is none of this name.
const Generator* findGenerator(std::string_view name);

/// Whether the judge is told of what a generator does.
bool isJudged(const Generator& generator);

/// Which generators take part in a session.
struct GeneratorChoice
{
    DocumentKind _kind = DocumentKind::Text;
    /// Only those that are judged.
    bool _isJudged = false;
    /// Names of those that don't.
    std::vector<std::string> _without;
};

/// Requires: there is one.
const Generator& pickGenerator(const GeneratorChoice& choice, Random& random);

} // namespace ZemFarm
