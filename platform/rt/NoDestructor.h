#pragma once
#include <new>
#include <utility>

namespace orv::rt {

// Holds a process-wide singleton that is never destroyed, so threads still running at exit
// (detached workers, the worker pool) never meet a destroyed run loop or defaults store.
template <class T>
class NoDestructor {
  public:
    template <class... Args>
    explicit NoDestructor(Args&&... args) {
        ::new (static_cast<void*>(storage_)) T(std::forward<Args>(args)...);
    }
    NoDestructor(const NoDestructor&) = delete;
    NoDestructor& operator=(const NoDestructor&) = delete;

    T& operator*() { return *get(); }
    T* operator->() { return get(); }
    T* get() { return std::launder(reinterpret_cast<T*>(storage_)); }

  private:
    alignas(T) unsigned char storage_[sizeof(T)];
};

}  // namespace orv::rt
