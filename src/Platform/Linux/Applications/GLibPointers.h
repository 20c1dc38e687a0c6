#pragma once

#include <gio/gio.h>
#include <memory>

namespace Tavrin {

template <auto release>
struct GLibRelease {
    template <typename Type>
    void operator()(Type* pointer) const
    {
        release(pointer);
    }
};

/// Owns one reference to a GObject.
template <typename Type>
using GObjectPointer = std::unique_ptr<Type, GLibRelease<g_object_unref>>;
/// Owns memory that GLib allocated.
template <typename Type>
using GAllocated = std::unique_ptr<Type, GLibRelease<g_free>>;
/// Owns a vector of strings that ends with a null pointer.
using GStringVector = std::unique_ptr<gchar*, GLibRelease<g_strfreev>>;
using GErrorPointer = std::unique_ptr<GError, GLibRelease<g_error_free>>;
/// Owns one reference to a parsed key file.
using GKeyFilePointer = std::unique_ptr<GKeyFile, GLibRelease<g_key_file_unref>>;

} // namespace Tavrin
