#pragma once

// A second, plain implementation of the archive's bytes, straight from the table in
// docs/archive_format.md: one byte at a time, recursive, without any check but the end of the
// bytes. It has records of its own and shares nothing with the library; PlainDescription.h compares
// the two.

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace plain {

using Text = std::u16string;  // names, too: a name of no characters is no name

struct MediaItem {
    std::uint32_t isRegistryValue;
    Text text;
    bool operator==(const MediaItem&) const = default;
};
struct MediaSource {
    std::uint32_t kind;
    std::vector<MediaItem> items;
    bool operator==(const MediaSource&) const = default;
};
struct Mapping {
    Text property;
    std::uint32_t access;
    Text instance;
    Text target;
    bool operator==(const Mapping&) const = default;
};
struct Property {
    std::uint32_t access;
    Text name;
    Text value;
    bool operator==(const Property&) const = default;
};
struct KeyPoint {
    Text time, value, kind, first, second;
    bool operator==(const KeyPoint&) const = default;
};
struct Envelope {
    Text number;
    std::vector<KeyPoint> points;
    bool operator==(const Envelope&) const = default;
};
struct Entry {
    Text instance, property, value;
    std::uint32_t kind;
    bool operator==(const Entry&) const = default;
};
struct Event {
    Text instance, property, envelope;
    bool operator==(const Event&) const = default;
};
struct Node {
    Text name;
    std::vector<Node> first, second;
    bool operator==(const Node&) const = default;
};
struct RegistryValue {
    Text first, second, third;
    bool operator==(const RegistryValue&) const = default;
};

// The fields of the table in its order. Maps are in ascending order of 16-bit units.
struct Description {
    std::vector<Text> inputs;
    std::map<Text, Text> effects;
    std::vector<Text> mixes;
    std::map<Text, MediaSource> media;
    std::vector<Mapping> mappings;
    std::vector<Property> properties;
    std::map<Text, Envelope> envelopes;
    std::vector<Entry> entries;
    std::vector<Event> events;
    Node structure;
    Text name, category;
    std::map<Text, std::uint32_t> numberedInputs;
    std::map<Text, RegistryValue> registryValues;
    bool isFilter = false;
    std::uint32_t speed = 0;
    bool swap = false;
    bool operator==(const Description&) const = default;
};

// A whole file, and where its counts and lengths stand.
struct File {
    std::string bytes;
    std::vector<std::size_t> counts;   // of elements
    std::vector<std::size_t> lengths;  // of texts and names
};

File Write(const Description& description, std::int32_t version = 2);

struct Reading {
    std::int32_t version = -1;  // -1 without a whole header
    bool whole = false;         // the description was read to its end
    Description description;
};

Reading Read(const std::string& bytes);

}  // namespace plain
