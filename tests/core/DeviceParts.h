// What the tests of devices have in common.
#pragma once

#include "core/Device.h"
#include "tests/core/DeviceDoubles.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orvel::core {

using Bytes = std::vector<std::uint8_t>;
using Lines = std::vector<std::string>;

inline Payload payloadOf(const Bytes& bytes) {
    return {bytes.data(), static_cast<std::uint32_t>(bytes.size())};
}

inline Bytes bytesOf(const Payload& payload) {
    return {payload.data(), payload.data() + payload.size()};
}

inline Attribute blank(const std::string& name) {
    return {name, "", ""};
}

inline std::string textIn(const AttributeHolder& holder, const std::string& name) {
    return holder.getAttribute(blank(name)).valueAsString();
}

inline Lines namesIn(const AttributeHolder& holder) {
    Lines names;
    for (const Attribute& attribute : holder.getAttributes())
        names.push_back(attribute.getName());
    return names;
}

inline void expectStatus(const Status& status, std::int32_t category, std::int32_t code,
                         const std::string& message) {
    EXPECT_EQ(status.getCategory(), category);
    EXPECT_EQ(status.getCode(), code);
    EXPECT_EQ(status.getMessage(), message);
}

inline void expectSuccess(const Status& status) {
    expectStatus(status, 0, 0, "Completed successfully.");
}

/// Notes its name in the diary, then acts. `Base` is one of the two kinds of identifiers.
template <class Base>
class FakeIdentifier : public Base {
public:
    using Action = std::function<Status(Device&)>;

    FakeIdentifier(doubles::Diary diary, std::string name, Action action = nullptr)
        : diary(std::move(diary)),
          name(std::move(name)),
          action(std::move(action)) {}

    Status identify(Device& device) override {
        diary->push_back(name);
        return action ? action(device) : Status();
    }

    std::unique_ptr<Base> clone() const override { return std::make_unique<FakeIdentifier>(*this); }

private:
    doubles::Diary diary;
    std::string name;
    Action action;
};

using FakeProtocol = FakeIdentifier<ProtocolIdentifier>;
using FakeProduct = FakeIdentifier<ProductIdentifier>;

/// An identifier that only acts.
inline FakeProtocol protocolThat(FakeProtocol::Action action) {
    return {doubles::newDiary(), "", std::move(action)};
}

inline FakeProtocol::Action setting(const Attribute& attribute) {
    return [attribute](Device& device) {
        device.setAttribute(attribute);
        return Status();
    };
}

inline std::shared_ptr<doubles::FakePath> addPath(Device& device, const std::string& name) {
    auto path = std::make_shared<doubles::FakePath>(name);
    device.addCommandPath(path);
    return path;
}

/// A device whose set "ATA" is served by the path "only".
struct DeviceWithPath {
    DeviceWithPath() : path(addPath(device, "only")) { device.addCommandSet("ATA", "only"); }

    Device device;
    std::shared_ptr<doubles::FakePath> path;
};

}  // namespace orvel::core
