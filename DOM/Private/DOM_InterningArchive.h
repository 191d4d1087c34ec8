#pragma once

#include "DOM_SharedObjectFactory.h"
#include "DOM_SharedPointers.h"

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

/// An archive that writes equal shared objects as one, so that equal documents are written alike.
class InterningOutputArchive : public cereal::JSONOutputArchive
{
public:
    using JSONOutputArchive::JSONOutputArchive;

    MetSharedPointers& getMetPointers()
    {
        return _metPointers;
    }

private:
    MetSharedPointers _metPointers;
};

} // namespace Zem::DOM::JsonDetails
