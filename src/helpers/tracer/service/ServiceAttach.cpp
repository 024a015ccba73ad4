#include <exception>
#include <optional>

#include "helpers/tracer/ModuleTracer.h"
#include "helpers/tracer/process_singleton.h"
#include "helpers/tracer/service/TraceService.h"
#include "platform/Thread.h"

// Attaches the library to the tracer of its process, for as long as it is loaded. Whoever finds
// none, or one that was left behind closed, runs it.

namespace helpers {
namespace {

class ServiceAttachment {
public:
    ServiceAttachment() {
        if (HasTracer()) return;
        try {
            Attach();
        } catch (...) {
            // The load succeeds without a tracer.
            service_.reset();
            WithdrawTracer();
            block_.Detach();
        }
    }
    ~ServiceAttachment() {
        if (block_.Block() == nullptr) return;
        if (service_) service_->Stop();
        WithdrawTracer();
        block_.Detach();
    }
    ServiceAttachment(const ServiceAttachment&) = delete;
    ServiceAttachment& operator=(const ServiceAttachment&) = delete;

private:
    void Attach() {
        const auto outcome = block_.Attach(true);
        if (outcome == process_singleton::Outcome::kAbsent) return;
        platform::OnFork(&ServiceAttachment::Abandon);
        TracerLayout& layout = block_.Block()->tracer;
        const bool leftBehind = Tracer(layout).IsLeftBehind();
        PublishTracer(layout);
        if (outcome == process_singleton::Outcome::kOpened && !leftBehind) return;
        service_.emplace(layout);
        service_->Construct();
    }
    static void Abandon();

    process_singleton block_;
    std::optional<TraceService> service_;
};

ServiceAttachment g_attachment;

void ServiceAttachment::Abandon() {
    AbandonTracer();
    g_attachment.block_.Abandon();
}

}  // namespace
}  // namespace helpers

// The linker is told to look for this name, so that this file is part of whatever runs a tracer.
extern "C" const int TarnexTraceService = 1;
