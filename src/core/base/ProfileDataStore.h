#pragma once

#include <optional>

// What the settings need of the call database: profile numbers in use, and a profile's data
// created and deleted together with its location.
class ProfileDataStore
{
public:
    virtual ~ProfileDataStore() = default;
    // nullopt when there is no database yet.
    virtual std::optional<int> maxProfileNumber() = 0;
    virtual void deleteProfile(int profile) = 0;
    virtual void createDefaultSmartList(int profile) = 0;
};
