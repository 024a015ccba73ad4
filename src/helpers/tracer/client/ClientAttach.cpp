#include "helpers/tracer/ModuleTracer.h"
#include "helpers/tracer/process_singleton.h"
#include "platform/Thread.h"

// Attaches a plug-in to the tracer of its process, for as long as it is loaded. A plug-in is loaded
// after the library that runs the tracer; without that one its messages go nowhere.

namespace helpers {
namespace {

class ClientAttachment {
public:
    ClientAttachment() {
        if (HasTracer()) return;  // the module runs the tracer itself
        try {
            if (block_.Attach(false) != process_singleton::Outcome::kOpened) return;
        } catch (...) {
            return;  // without memory the plug-in loads without a log
        }
        platform::OnFork(&ClientAttachment::Abandon);
        PublishTracer(block_.Block()->tracer);
    }
    ~ClientAttachment() {
        if (block_.Block() == nullptr) return;
        WithdrawTracer();
        block_.Detach();
    }
    ClientAttachment(const ClientAttachment&) = delete;
    ClientAttachment& operator=(const ClientAttachment&) = delete;

private:
    static void Abandon();

    process_singleton block_;
};

ClientAttachment g_attachment;

void ClientAttachment::Abandon() {
    AbandonTracer();
    g_attachment.block_.Abandon();
}

}  // namespace
}  // namespace helpers

// The linker is told to look for this name, so that this file is part of every plug-in.
extern "C" const int TarnexTraceClient = 1;
