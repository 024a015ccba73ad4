// A host that does what it is told: reads commands from standard input, one per line with its
// arguments separated by tabs, and answers each with lines and a closing ".". Sees the
// library through the public headers alone. Texts are UTF-8.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <map>
#include <string>
#include <vector>

#include "host/SlotCalls.h"
#include "host/Soak.h"
#include "support/ChildProcess.h"
#include "support/Library.h"
#include "support/Text.h"
#include "support/Usage.h"
#include "tarnex/GlobalFxFactory.h"
#include "tarnex/ITarnex.h"

namespace {

using Arguments = std::vector<std::string>;
using test_support::Utf8;
using test_support::Wide;

void* library;
std::shared_ptr<tarnex::ITarnex> manager;
std::shared_ptr<tarnex::GlobalFXFactory> factory;
std::vector<std::shared_ptr<fx::IBaseFX>> kept;

void Say(const std::string& text) {
    std::cout << text << "\n";
}

std::string Outcome(unsigned code, const void* pointer) {
    return std::to_string(code) + (pointer != nullptr ? " set" : " empty");
}

void Load(const Arguments& arguments) {
    library = test_support::OpenLibrary(test_support::PathFromUtf8(arguments[1]));
    Say(library != nullptr ? "loaded" : "not loaded");
}

// "load_at FILE TIME": at that microsecond of the system's clock, which another process waits for,
// too. Says afterwards what it got.
void LoadAt(const Arguments& arguments) {
    const std::chrono::microseconds time(std::stoll(arguments[2]));
    while (std::chrono::system_clock::now().time_since_epoch() < time) {
    }
    Load(arguments);
}

void Get(const Arguments&) {
    auto entry =
        reinterpret_cast<decltype(&GetTarnex)>(test_support::FindSymbol(library, "GetTarnex"));
    const std::shared_ptr<tarnex::ITarnex> before = manager;
    const tarnex::_eError code = entry(manager);
    Say(Outcome(code, manager.get()) + (before != nullptr && before == manager ? " same" : ""));
}

void BuildFactory(const Arguments& arguments) {
    const std::shared_ptr<tarnex::GlobalFXFactory> before = factory;
    const tarnex::_eError code = manager->GetFXFactory(Wide(arguments[1]), Wide(arguments[2]),
                                                       Wide(arguments[3]), 0, factory);
    Say(Outcome(code, factory.get()) + (before != nullptr && before == factory ? " same" : ""));
}

// `out` goes in holding an effect of the host's own when asked, so that untouched and emptied show.
void Create(const Arguments& arguments) {
    std::shared_ptr<fx::IBaseFX> out = kept.empty() ? nullptr : kept.back();
    const bool byPath = arguments[0] == "create_path";
    const fx::_eError code = byPath ? factory->CreateFX(Wide(arguments[1]), out)
                                    : factory->CreateFX(std::stoull(arguments[1]), out);
    std::string text = Outcome(code, out.get());
    if (out != nullptr && !kept.empty() && out == kept.back()) {
        text += " untouched";
    } else if (out != nullptr && out->GetDescriptor() != nullptr) {
        text += " " + Utf8(out->GetDescriptor()->id);
    }
    Say(text);
}

// Creates from the files in turns until somebody ends the process; a line after each.
void CreateForever(const Arguments& arguments) {
    for (std::size_t i = 1;; i = i + 1 < arguments.size() ? i + 1 : 1) {
        std::shared_ptr<fx::IBaseFX> out;
        std::cout << factory->CreateFX(Wide(arguments[i]), out) << std::endl;
    }
}

void Keep(const Arguments& arguments) {
    std::shared_ptr<fx::IBaseFX> effect;
    Say(std::to_string(factory->CreateFX(std::stoull(arguments[1]), effect)));
    kept.push_back(effect);
}

void List(const Arguments&) {
    std::list<tarnex::EffectRecord> records{{99, 9, 9, L"left over", true}};
    Say(std::to_string(factory->GetEffects(records)));
    for (const tarnex::EffectRecord& record : records) {
        Say(std::to_string(record.index) + " " + std::to_string(record.flags) + " " +
            std::to_string(record.inputs) + " " + (record.enabled ? "on" : "off") + " " +
            Utf8(record.name));
    }
}

void Unload(const Arguments&) {
    manager.reset();
    test_support::CloseLibrary(library);
}

// "cycle FILE COUNT": loads the library, gets the manager or not and unloads it. Says what that
// many times add after a quarter as many.
void Cycle(const Arguments& arguments) {
    const int count = std::stoi(arguments[2]);
    const auto times = [&arguments](int left) {
        for (; left > 0; --left) {
            library = test_support::OpenLibrary(test_support::PathFromUtf8(arguments[1]));
            auto entry = reinterpret_cast<decltype(&GetTarnex)>(
                test_support::FindSymbol(library, "GetTarnex"));
            entry(manager);
            Unload({});
        }
    };
    times(count / 4);
    const test_support::Usage before = test_support::LeastUsage(20, {});
    times(count);
    Say(test_support::Growth(before, test_support::LeastUsage(500, before)));
}

const std::map<std::string, std::function<void(const Arguments&)>> kCommands = {
    {"load", Load},
    {"load_at", LoadAt},
    {"unload", Unload},
    {"cycle", Cycle},
    {"soak",
     [](const Arguments& arguments) {
         Soak(*factory, std::stoi(arguments[1]), Arguments(arguments.begin() + 2, arguments.end()),
              Say);
     }},
    {"get", Get},
    {"factory", BuildFactory},
    {"count", [](const Arguments&) { Say(std::to_string(factory->GetFXCount())); }},
    {"name",
     [](const Arguments& arguments) {
         Say("<" + Utf8(factory->GetFXName(std::stoull(arguments[1]))) + ">");
     }},
    {"create", Create},
    {"create_path", Create},
    {"create_path_forever", CreateForever},
    {"keep", Keep},
    {"copy",
     [](const Arguments&) {
         Say(std::to_string(kept.at(kept.size() - 2)->CopyPropertiesFrom(kept.back())));
     }},
    {"drop", [](const Arguments&) { kept.clear(); }},
    {"remove",
     [](const Arguments& arguments) {
         Say(std::to_string(factory->RemoveEffect(Wide(arguments[1]))));
     }},
    {"register",
     [](const Arguments& arguments) {
         Say(std::to_string(factory->RegisterEffect(Wide(arguments[1]), arguments[2] == "path")));
     }},
    {"list", List},
    {"manager_slots", [](const Arguments&) { CallManagerSlots(manager.get(), Say); }},
    {"factory_slots", [](const Arguments&) { CallFactorySlots(factory.get(), Say); }},
    {"effect_slots", [](const Arguments&) { CallEffectSlots(kept.back().get(), Say); }},
    {"quit", [](const Arguments&) { std::exit(0); }},
};

Arguments Split(const std::string& line) {
    Arguments arguments(1);
    for (const char character : line) {
        if (character == '\t') {
            arguments.emplace_back();
        } else if (character != '\r') {
            arguments.back() += character;
        }
    }
    return arguments;
}

}  // namespace

int main() {
    test_support::BeginChild();
    for (std::string line; std::getline(std::cin, line);) {
        const Arguments arguments = Split(line);
        kCommands.at(arguments[0])(arguments);
        std::cout << "." << std::endl;
    }
    return 0;
}
