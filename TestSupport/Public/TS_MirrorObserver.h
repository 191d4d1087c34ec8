#pragma once

/// An observer that keeps a copy of a text by what it is told alone, as a view of the document would.

#include "DOM_Run.h"
#include "DOM_TextWithTombstones.h"
#include "Notifications/DClb_SingleActionExecutorNotificationObserver.h"

#include <functional>
#include <string>

namespace Zem::TestSupport
{

/// Copies what is inserted from the text at the moment that it is told of it, and takes out what it is told was
/// removed, which must be what the mirror has there. Differences are collected as sentences.
class MirrorObserver final : public DOMCollaboration::SingleActionExecutorNotificationObserver<std::function<void()>>
{
public:
    /// Mirrors the blocks of `text`, which is at `address`; other texts are none of its business.
    MirrorObserver(const DOM::TextWithTombstones& text, DOM::NativeNodeAddress address);

    /// What went wrong so far, and whether the mirror shows what the text holds now; empty when all is well.
    std::string findDifferences() const;

    void onCharsRemoved(const DOM::NativeNodeAddress& address, CollaborationUtils::IndexExcludingTombstones begin,
                        const std::string& removed) override;
    void onCharsInserted(const DOM::NativeNodeAddress& address,
                         const CollaborationUtils::IndexRange<unsigned long>& range) override;
    void onRunsRemoved(const DOM::NativeNodeAddress& address, CollaborationUtils::IndexExcludingTombstones begin,
                       const ReadonlyVector<DOM::Runs>& removed) override;
    void onRunsInserted(const DOM::NativeNodeAddress& address,
                        const CollaborationUtils::IndexRange<unsigned long>& range) override;
    void onBlocksRemoved(const DOM::NativeNodeAddress& address, CollaborationUtils::IndexExcludingTombstones begin,
                         const ReadonlyVector<DOM::Blocks>& removed) override;
    void onBlocksInserted(const DOM::NativeNodeAddress& address,
                          const CollaborationUtils::IndexRange<unsigned long>& range) override;

private:
    bool isMine(const DOM::NativeNodeAddress& address, unsigned long stepsBelow) const;
    void expect(bool condition, const char* what);

    const DOM::TextWithTombstones& _text;
    DOM::NativeNodeAddress _address;
    DOM::Blocks _mirror;
    std::string _differences;
};

} // namespace Zem::TestSupport
