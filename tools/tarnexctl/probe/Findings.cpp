#include "probe/Findings.h"

#include "frame/Writer.h"

namespace tarnexctl {

const char* SeverityName(Severity severity) {
    switch (severity) {
        case Severity::kError:
            return "error";
        case Severity::kWarning:
            return "warning";
        case Severity::kNote:
            return "note";
    }
    return "error";
}

Style StyleOf(Severity severity) {
    switch (severity) {
        case Severity::kError:
            return Style::kError;
        case Severity::kWarning:
            return Style::kWarning;
        case Severity::kNote:
            return Style::kNote;
    }
    return Style::kPlain;
}

const std::vector<FindingKind>& FindingKinds() {
    using enum Severity;
    static const std::vector<FindingKind> kKinds = {
        // What the file says, before anything is loaded.
        {"P101", kError, "not a library", "Check that the file is what its name says."},
        {"P102", kError, "the library's file is damaged", "Build or copy it again."},
        {"P103", kError, "made for another system", "Use the build for this system."},
        {"P104", kError, "made for another machine", "Build the plug-in for 64-bit x86."},
        {"P105", kError, "does not export CreateFactory",
         "Export a function of that plain C name; the SDK's TARNEX_PLUGIN does it."},
        {"P106", kError, "a library that it needs cannot be found",
         "Put that library beside the plug-in, where the loader looks first."},
        {"P107", kError, "a library that it needs is made for another machine",
         "Replace that library by its 64-bit x86 build."},
        {"P108", kError, "a library that it needs lacks a function",
         "Replace that library by the version that the plug-in was linked with."},
        {"P109", kError, "uses another C++ runtime than the library",
         "Build the plug-in with the same compiler family: shared pointers and exceptions cross "
         "the interface."},
        {"P110", kWarning, "shares no C++ runtime",
         "Link the C++ runtime dynamically, or exceptions of the plug-in cannot be told apart by "
         "their type."},
        {"P111", kError, "the system does not load it", "See the system's words."},
        {"P112", kError, "a program, not a library", "Link it as a shared library."},
        {"P113", kWarning, "a library that it needs at a later call cannot be found",
         "Put that library beside the plug-in."},
        // The factory.
        {"P201", kError, "CreateFactory returns an error",
         "The library passes the plug-in over without a word: return 0."},
        {"P202", kError, "CreateFactory returns 0 and no factory",
         "The library passes the plug-in over without a word: fill the pointer."},
        {"P203", kError, "CreateFactory throws",
         "This leaves the library without any effect, those of other plug-ins included: catch "
         "everything in CreateFactory and return a code."},
        {"P204", kError, "GetFXCount throws",
         "This leaves the library without any effect: never throw from it."},
        {"P205", kError, "GetFXCount changes between calls",
         "Global indexes shift under the host's feet: return the same count for the whole life."},
        {"P206", kWarning, "offers no effect", "Return the number of effects from GetFXCount."},
        {"P207", kError, "GetFXName throws", "Return a name, or an empty one."},
        {"P208", kWarning, "an effect without a name", "Return a name from GetFXName."},
        {"P209", kWarning, "a name for an index that does not exist",
         "Return an empty name for an unknown index."},
        {"P210", kError, "CreateFX returns an error", "The effect cannot be used or listed."},
        {"P211", kError, "CreateFX throws",
         "At start-up this leaves the library without any effect: catch and return a code."},
        {"P212", kError, "CreateFX returns 0 and no effect", "Fill the pointer or return a code."},
        {"P213", kError, "CreateFX accepts an index that does not exist",
         "Return 9 (eWrongFXIdx) for every index from GetFXCount on."},
        {"P214", kError, "CreateFX throws for an index that does not exist",
         "Return 9 (eWrongFXIdx) instead."},
        {"P215", kError, "CreateFX hands out one object twice",
         "Make a new effect at every call: hosts use several at once."},
        {"P216", kWarning, "GetFXName throws for an index that does not exist",
         "Return an empty name instead."},
        // The effect.
        {"P301", kError, "GetDescriptor returns null",
         "The effect gets no record in the library's list: return the effect's own descriptor."},
        {"P302", kError, "GetDescriptor throws",
         "At start-up this leaves the library without any effect: never throw from it."},
        {"P303", kError, "an effect without an id", "Fill the descriptor's id."},
        {"P304", kError, "two effects with one id",
         "Only the first can be found by name: give every effect its own id."},
        {"P305", kError, "the descriptor differs between two instances",
         "Fill it from the class, not from the object."},
        {"P306", kWarning, "more inputs than 32 bits hold", "Set the descriptor's inputs."},
        {"P307", kError, "an operation throws",
         "No exception may cross the interface: catch and return a code."},
        {"P308", kError, "an out-pointer is not emptied",
         "An operation that is not implemented empties its out-pointer and returns "
         "eNotImplemented."},
        // Properties.
        {"P401", kError, "GetProperties fails", "Return 0 and every name."},
        {"P402", kError, "a property is listed twice", "Names are unique within an effect."},
        {"P403", kError, "a property without a name", "Give it one."},
        {"P404", kError, "GetPropertyInfo fails for a listed property",
         "Every listed property has its record."},
        {"P405", kError, "a property that does not exist is not refused",
         "Return 4 (ePropertyNotFound) for an unknown name; case counts."},
        {"P406", kError, "a readable property cannot be read",
         "Return the value in the form that the type code names, or clear access bit 0."},
        {"P407", kError, "a property that is not readable can be read",
         "Return 5 (ePropertyNoAccessForReading), or set access bit 0."},
        {"P408", kError, "a writable property cannot be written",
         "Take the value in the form that the type code names, or clear access bit 1."},
        {"P409", kError, "a property that is not writable can be written",
         "Return 6 (ePropertyNoAccessForWriting), or set access bit 1."},
        {"P410", kError, "a property can be read in another form than its own",
         "Return 15 (ePointerCastFailure) for another form."},
        {"P411", kError, "the size of a property does not fit its type",
         "Set the record's size to that of the value's storage."},
        {"P412", kNote, "a property of none of the five forms",
         "Fine for raw values; type codes 1 to 5 name the forms."},
        {"P413", kWarning, "a value outside its own range", "Start with a value within the range."},
        {"P414", kWarning, "a default outside the range", "Correct the default or the range."},
        {"P415", kError, "a range whose minimum is above its maximum", "Correct the range."},
        {"P416", kError, "a written value is not kept",
         "A value that was read can be written back and reads the same again."},
        {"P417", kError, "a raw read writes past the buffer",
         "Copy at most the buffer's size and report how many bytes were copied."},
        {"P418", kError, "two instances share a value", "Keep values in the object."},
        {"P419", kError, "two instances list different properties",
         "CopyPropertiesFrom needs the same names on both sides."},
        // What ended the child process.
        {"P901", kError, "crashes", "Run it in a debugger at the step that is named."},
        {"P902", kError, "hangs", "Attach a debugger at the step that is named."},
        {"P903", kError, "ends its process",
         "Never call exit, abort or terminate in a plug-in: the host goes with it."},
        // The machine.
        {"D101", kNote, "tracing is off", "Set Enabled to 1 to get a log."},
        {"D102", kWarning, "tracing is on, but lets nothing through",
         "Set Level to 2, or to a mask that contains it."},
        {"D103", kError, "no folder for the log can be written",
         "Give the host's user the right to write beside the program."},
        {"D104", kNote, "the ownership is taken",
         "Only one process at a time may use the library: end the owner to start another host."},
        {"D105", kError, "the ownership is taken by a process that was itself refused",
         "The owner is gone, but others keep the library loaded: end those too."},
        {"D106", kWarning, "the library cannot be asked",
         "Name it with --library; \"tarnexctl probe\" says why a library does not load."},
        {"D107", kError, "a setting is too long", "Shorten it to at most 259 characters."},
        {"D108", kWarning, "the ownership is taken by an unknown process",
         "It may belong to another user: look as an administrator."},
        {"D109", kWarning, "a folder cannot be written", "Archives cannot be put there."},
    };
    return kKinds;
}

const FindingKind* FindFindingKind(const std::string& code) {
    for (const FindingKind& kind : FindingKinds()) {
        if (code == kind.code) return &kind;
    }
    return nullptr;
}

Severity SeverityOf(const Finding& finding) {
    const FindingKind* const kind = FindFindingKind(finding.code);
    return kind == nullptr ? Severity::kError : kind->severity;
}

Json FindingDocument(const Finding& finding) {
    const FindingKind* const kind = FindFindingKind(finding.code);
    Json document;
    document["code"] = finding.code;
    document["severity"] = SeverityName(SeverityOf(finding));
    document["title"] = kind == nullptr ? "" : kind->title;
    document["detail"] = finding.detail;
    document["remedy"] = kind == nullptr ? "" : kind->remedy;
    return document;
}

}  // namespace tarnexctl
