#pragma once

#include "DOM_SharedObjectFactory.h"

#include <cereal/archives/json.hpp>

#include <istream>

namespace Zem::DOM::JsonDetails
{

/// An archive whose styles are made by a factory, so that equal ones become one object.
class InterningInputArchive : public cereal::JSONInputArchive
{
public:
    InterningInputArchive(std::istream& stream, const SharedObjectFactory& factory)
        : JSONInputArchive(stream)
        , _factory(factory)
    {
    }

    const SharedObjectFactory& getFactory() const
    {
        return _factory;
    }

private:
    const SharedObjectFactory& _factory;
};

} // namespace Zem::DOM::JsonDetails
