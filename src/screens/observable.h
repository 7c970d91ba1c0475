#pragma once
#include <functional>
#include <map>

namespace ketrel {

// Lets views follow a model object: observers run after every change.
class Observable {
  public:
    using Observer = std::function<void()>;
    Observable() = default;
    Observable(const Observable&) = delete;
    Observable& operator=(const Observable&) = delete;
    virtual ~Observable() = default;

    // Returns an id for unobserve().
    int observe(Observer fn) {
        int id = nextId_++;
        observers_.emplace(id, std::move(fn));
        return id;
    }
    void unobserve(int id) { observers_.erase(id); }

  protected:
    void notify() {
        if (observers_.empty()) return;
        // Observers may remove themselves while running.
        auto copy = observers_;
        for (auto& [id, fn] : copy)
            fn();
    }

  private:
    std::map<int, Observer> observers_;
    int nextId_ = 1;
};

}  // namespace ketrel
