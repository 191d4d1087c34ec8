#pragma once

#include <boost/signals2/dummy_mutex.hpp>
#include <boost/signals2/signal_type.hpp>

namespace Zem::CollaborationEngine
{

/// Raised after every action of a document, on the thread that executes it. Only those who connect to it include this.
class AfterDocumentActionSignal
    : public boost::signals2::signal_type<void(),
                                          boost::signals2::keywords::mutex_type<boost::signals2::dummy_mutex>>::type
{
};

} // namespace Zem::CollaborationEngine
