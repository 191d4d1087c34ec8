#pragma once

namespace Zem::CollaborationSession
{

/// Several lambdas as one function object, for `std::visit`.
template<class... Handlers>
struct Overloaded : Handlers...
{
    using Handlers::operator()...;
};

template<class... Handlers>
Overloaded(Handlers...) -> Overloaded<Handlers...>;

} // namespace Zem::CollaborationSession
