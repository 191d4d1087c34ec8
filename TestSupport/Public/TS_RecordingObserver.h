#pragma once

/// An observer that writes down what it is told, for tests of executors.

#include "CE_DataValue.h"
#include "Notifications/DClb_NotificationTable.h"

#include <memory>
#include <string>
#include <vector>

namespace Zem::TestSupport
{

/// A native address as text: the steps with a slash between them, fixed ones by name, such as
/// "BlockCollection/0/RunCollection/1"; a cell as "(row,column)", a key as "{key}".
std::string describe(const DOM::NativeNodeAddress& address);

/// Writes every call down as one line of text, "operation(argument, ...)". Ranges are "[begin,end)", removed bytes
/// stand in quotes, removed things as a list of their kinds in brackets, text runs with their text, rows and columns as
/// "id 7 cells {0, 2}"; whatever has a `UUID` is written by it. Values of properties are kept beside the lines.
class RecordingObserver final : public DOMCollaboration::ExecutorNotificationObserver
{
public:
    struct Values
    {
        std::unique_ptr<CollaborationEngine::DataValue> _old;
        std::unique_ptr<CollaborationEngine::DataValue> _new;
    };

    /// What was told since the last call of this, in order.
    std::vector<std::string> takeLines();

    /// The values that came with the notifications that carry any, all of them in order.
    const std::vector<Values>& getValues() const
    {
        return _values;
    }

#define ZEM_DECLARE(name, parameters, arguments) void name parameters override;
    ZEM_NOTIFICATIONS(ZEM_DECLARE)
#undef ZEM_DECLARE

private:
    template<class... Arguments>
    void record(const char* operation, const Arguments&... arguments);

    std::vector<std::string> _lines;
    std::vector<Values> _values;
};

} // namespace Zem::TestSupport
