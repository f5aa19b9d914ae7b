// Handlers that come and go, in any order, also while a message is on its way.

#include <algorithm>
#include <array>
#include <memory>
#include <random>

#include "skin_window_fixture.h"

namespace {

constexpr UINT WM_TEST = WM_APP + 1;

CSkinSubclassWndMap& Map() {
    return CSkinSubclassWndMap::GetHookMap();
}

WNDPROC ProcedureOf(HWND window) {
    return reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC));
}

class SkinSubclass : public test::SkinWindowTest {
protected:
    SkinSubclass() { Make(); }

    void Make() {
        SkinWindowTest::Make(WS_POPUP, CSize(50, 50));
        own_ = ProcedureOf(window_);
    }
    LRESULT Send(WPARAM wParam = 0, LPARAM lParam = 0) { return SendMessageW(window_, WM_TEST, wParam, lParam); }
    // Counts the messages that come to the window's procedure.
    static void Count(int& arrived) {
        OnProcedure() = [&arrived](HWND, UINT message, WPARAM, LPARAM) { arrived += message == WM_TEST; };
    }

    WNDPROC own_ = nullptr;
};

class Handler : public CSkinSubclassWnd {
public:
    explicit Handler(std::function<LRESULT(Handler&, UINT)> onMessage = nullptr) : onMessage_(std::move(onMessage)) {}

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        EXPECT_NE(message, UINT{WM_DESTROY});
        EXPECT_NE(message, UINT{WM_NCDESTROY});
        return message == WM_TEST && onMessage_ ? onMessage_(*this, message)
                                                : CSkinSubclassWnd::WindowProc(message, wParam, lParam);
    }
    void OnWindowEnded() override { ++ended; }

    int ended = 0;

private:
    std::function<LRESULT(Handler&, UINT)> onMessage_;
};

TEST_F(SkinSubclass, AsksTheLastAttachedFirst) {
    std::string log;
    OnProcedure() = [&](HWND, UINT message, WPARAM, LPARAM) { log += message == WM_TEST ? "W" : ""; };
    const auto named = [&](char name) {
        return [&log, name](Handler& self, UINT) {
            log += name;
            return self.Default();
        };
    };
    Handler first(named('1'));
    Handler second(named('2'));
    Handler third(named('3'));
    const auto sent = [&] {
        log.clear();
        Send();
        return log;
    };
    EXPECT_TRUE(first.HookWindow(nullptr));
    EXPECT_FALSE(first.IsHooked(Wnd()));
    EXPECT_TRUE(first.HookWindow(Wnd()));
    EXPECT_TRUE(second.HookWindow(Wnd()));
    EXPECT_TRUE(third.HookWindow(Wnd()));
    EXPECT_EQ(Map().Lookup(window_), &third);
    EXPECT_EQ(Map().GetCount(), 1);
    EXPECT_EQ(second.GetHookedWnd()->GetSafeHwnd(), window_);
    EXPECT_EQ(sent(), "321W");

    EXPECT_FALSE(second.HookWindow(Wnd()));  // and stays where it is
    CWnd none;
    EXPECT_FALSE(Handler().HookWindow(&none));
    EXPECT_EQ(sent(), "321W");

    EXPECT_TRUE(first.HookWindow(nullptr));
    EXPECT_FALSE(first.IsHooked(nullptr));
    EXPECT_TRUE(second.IsHooked(Wnd()));
    EXPECT_EQ(first.GetHookedWnd(), nullptr);
    EXPECT_EQ(first.WindowProc(WM_TEST + 1, 0, 0), 0);
    EXPECT_EQ(sent(), "32W");
    EXPECT_NE(ProcedureOf(window_), own_);
    Map().RemoveAll(window_);
    EXPECT_EQ(Map().Lookup(window_), nullptr);
    EXPECT_EQ(ProcedureOf(window_), own_);
    EXPECT_FALSE(Map().Remove(&second));
    EXPECT_EQ(sent(), "W");
    EXPECT_EQ(second.ended + third.ended, 0);
}

TEST_F(SkinSubclass, KeepsTheThreadsRecordOfTheLastMessage) {
    MSG& record = AfxGetThreadState()->m_lastSentMsg;
    record = {nullptr, 1, 2, 3, 0, {}};
    Handler handler([&](Handler& self, UINT) {
        EXPECT_EQ(record.hwnd, window_);
        EXPECT_EQ(record.message, WM_TEST);
        EXPECT_EQ(record.wParam, 11U);
        EXPECT_EQ(record.lParam, 12);
        SendMessageW(window_, WM_TEST + 1, 5, 6);
        EXPECT_EQ(record.wParam, 11U);
        self.Default();
        return 8;
    });
    handler.HookWindow(Wnd());
    EXPECT_EQ(Send(11, 12), 8);
    EXPECT_EQ(record.message, 1U);
    EXPECT_EQ(record.lParam, 3);

    Handler thrower([](Handler&, UINT) -> LRESULT { AfxThrowUserException(); });
    thrower.HookWindow(Wnd());
    EXPECT_EQ(Send(11, 12), 0);
    EXPECT_EQ(record.message, 1U);
}

// The handler of one window is attached to another one while it still is in the middle of a message of the first.
TEST_F(SkinSubclass, PassesAMessageOnToTheWindowThatItCameFor) {
    const HWND first = window_;
    const HWND second = CreateWindowExW(0, _T("Static"), _T(""), WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
    std::vector<HWND> seen;
    Handler below([&](Handler& self, UINT) {
        seen.push_back(self.GetHookedHwnd());
        return self.Default();
    });
    Handler mover([&](Handler& self, UINT) {
        self.HookWindow(nullptr);
        self.HookWindow(CWnd::FromHandle(second));
        return self.Default();
    });
    below.HookWindow(CWnd::FromHandle(first));
    mover.HookWindow(CWnd::FromHandle(first));
    Send();
    EXPECT_EQ(seen, std::vector<HWND>{first});
    EXPECT_EQ(Map().Lookup(second), &mover);
    DestroyWindow(first);
    EXPECT_EQ(below.ended, 1);
    EXPECT_EQ(mover.ended, 0);
    DestroyWindow(second);
}

// One random script: handlers that do something before or behind passing on. The route of each message is that of the chain
// when it came, without those that were detached since.
class Script {
public:
    static constexpr int HANDLERS = 8;

    Script(unsigned seed, HWND window) : random_(seed), window_(window) {
        for (auto& handler : handlers_) {
            handler = Make();
        }
    }

    void Run() {
        for (int step = 0; step < 12 && alive_; ++step) {
            Roll(HANDLERS) < 5 ? Send() : Act(nullptr);
        }
        if (alive_) {
            Destroy();
        }
        EXPECT_EQ(destroyed_, 2);  // WM_DESTROY and WM_NCDESTROY
        EXPECT_EQ(Map().Lookup(window_), nullptr);
        for (const auto& handler : handlers_) {
            EXPECT_FALSE(handler->IsHooked(nullptr));
        }
    }

    // What the window's procedure is told.
    void Procedure(UINT message) {
        if (message == WM_DESTROY || message == WM_NCDESTROY) {
            EXPECT_EQ(message, destroyed_ == 0 ? UINT{WM_DESTROY} : UINT{WM_NCDESTROY});
            EXPECT_EQ(Map().Lookup(window_), nullptr);
            ++destroyed_;
        } else if (message == WM_TEST) {
            EXPECT_TRUE(routes_.back()->rest.empty());
            ++routes_.back()->arrived;
        }
    }

private:
    struct Route {
        std::vector<Handler*> rest;
        int arrived = 0;  // at the window's procedure
    };

    int Roll(int sides) { return static_cast<int>(random_() % static_cast<unsigned>(sides)); }
    std::unique_ptr<Handler> Make() {
        return std::make_unique<Handler>([this](Handler& self, UINT) { return Handle(self); });
    }

    LRESULT Handle(Handler& self) {
        Route& route = *routes_.back();
        EXPECT_FALSE(route.rest.empty());
        if (!route.rest.empty()) {
            EXPECT_EQ(route.rest.front(), &self);
            route.rest.erase(route.rest.begin());
        }
        const int when = Roll(4);
        if (when == 0) {
            Act(&self);
        }
        const LRESULT result = self.Default();
        if (when == 1) {
            Act(nullptr);  // `self` may go, too
        }
        return result;
    }

    void Send() {
        Route route{chain_};
        routes_.push_back(&route);
        ++depth_;
        SendMessageW(window_, WM_TEST, 0, 0);
        --depth_;
        routes_.pop_back();
        EXPECT_TRUE(route.rest.empty());
        EXPECT_LE(route.arrived, 1);
        if (alive_) {
            EXPECT_EQ(route.arrived, 1);
        }
    }

    void Act(Handler* inside) {
        std::unique_ptr<Handler>& some = handlers_[static_cast<std::size_t>(Roll(HANDLERS))];
        switch (alive_ ? Roll(10) : 9) {
            case 0:
            case 1:
            case 2:
                Attach(*some);
                break;
            case 3:
                Detach(*(inside != nullptr ? inside : some.get()));
                break;
            case 4:
                if (!routes_.empty() && !routes_.back()->rest.empty()) {
                    Detach(*routes_.back()->rest.front());
                }
                break;
            case 5:
                Map().RemoveAll(window_);
                while (!chain_.empty()) {
                    Drop(*chain_.front());
                }
                break;
            case 6:
                if (depth_ < 3) {
                    Send();
                }
                break;
            case 7:
                if (some.get() != inside) {  // it has to pass on still
                    Delete(some);
                }
                break;
            case 8:
                if (Roll(4) == 0) {
                    Destroy();
                }
                break;
            default:
                Detach(*some);
        }
    }

    void Attach(Handler& handler) {
        const bool attached = std::count(chain_.begin(), chain_.end(), &handler) != 0;
        EXPECT_EQ(handler.HookWindow(CWnd::FromHandle(window_)) != FALSE, !attached);
        if (!attached) {
            chain_.insert(chain_.begin(), &handler);
        }
    }
    void Detach(Handler& handler) {
        EXPECT_TRUE(handler.HookWindow(nullptr));
        Drop(handler);
    }
    // Deleted handlers that are in the middle of a message cannot pass it on: only those that are not are taken.
    void Delete(std::unique_ptr<Handler>& handler) {
        if (depth_ > 0) {
            return Detach(*handler);
        }
        Drop(*handler);
        handler = Make();
    }
    void Destroy() {
        alive_ = false;
        DestroyWindow(window_);
        while (!chain_.empty()) {
            Drop(*chain_.front());
        }
    }
    void Drop(Handler& handler) {
        std::erase(chain_, &handler);
        for (Route* const route : routes_) {
            std::erase(route->rest, &handler);
        }
    }

    std::mt19937 random_;
    HWND window_;
    std::array<std::unique_ptr<Handler>, HANDLERS> handlers_;
    std::vector<Handler*> chain_;  // as it should be
    std::vector<Route*> routes_;   // of the messages on their way
    bool alive_ = true;
    int depth_ = 0;
    int destroyed_ = 0;
};

TEST_F(SkinSubclass, KeepsOrderInAThousandRandomScripts) {
    for (unsigned seed = 0; seed < 1000; ++seed) {
        SCOPED_TRACE(seed);
        Script script(seed, window_);
        OnProcedure() = [&](HWND, UINT message, WPARAM, LPARAM) { script.Procedure(message); };
        script.Run();
        OnProcedure() = nullptr;
        ASSERT_TRUE(Map().IsEmpty());
        ASSERT_FALSE(HasFailure());
        CWnd::DeleteTempMap();
        Make();
    }
}

// A handler deletes itself in the middle of a message, and one that comes after it.
TEST_F(SkinSubclass, OutlivesItsHandlers) {
    int arrived = 0;
    Count(arrived);
    auto last = std::make_unique<Handler>();
    auto middle = std::make_unique<Handler>();
    std::unique_ptr<Handler> first;
    first = std::make_unique<Handler>([&](Handler& self, UINT) {
        middle.reset();
        const LRESULT result = self.Default();
        first.reset();
        return result;
    });
    for (const auto& handler : {&last, &middle, &first}) {
        (*handler)->HookWindow(Wnd());
    }
    Send();
    EXPECT_EQ(arrived, 1);
    EXPECT_EQ(Map().Lookup(window_), last.get());
    last.reset();
    EXPECT_EQ(ProcedureOf(window_), own_);
}

// Another party that replaces the procedure, too. It puts back what it has found.
struct Party {
    static inline WNDPROC before = nullptr;
    static inline int calls = 0;

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        calls += message == WM_TEST;
        return calls > 3 ? 0 : CallWindowProcW(before, window, message, wParam, lParam);  // round in a circle
    }
    static void Enter(HWND window) {
        before = reinterpret_cast<WNDPROC>(SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure)));
    }
    static void Leave(HWND window) { SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(before)); }
};

TEST_F(SkinSubclass, GetsOnWithOthersWhoReplaceTheProcedure) {
    constexpr unsigned STEPS = 9;
    for (unsigned order = 0; order < 1U << STEPS; ++order) {
        int handled = 0;
        int arrived = 0;
        Count(arrived);
        Handler handler([&](Handler& self, UINT) {
            ++handled;
            return self.Default();
        });
        bool entered = false;
        bool attached = false;
        bool cutOff = false;  // by the party, which lay below the handler and left
        for (unsigned step = 0; step < STEPS; ++step) {
            if ((order >> step & 1) != 0) {
                cutOff = cutOff || (entered && attached && ProcedureOf(window_) != &Party::Procedure);
                entered ? Party::Leave(window_) : Party::Enter(window_);
                entered = !entered;
            } else {
                attached = !attached;
                EXPECT_TRUE(handler.HookWindow(attached ? Wnd() : nullptr));
                cutOff = false;
            }
            handled = arrived = Party::calls = 0;
            Send();
            EXPECT_EQ(arrived, 1) << order << " " << step;
            EXPECT_EQ(handled, attached && !cutOff ? 1 : 0) << order << " " << step;
            EXPECT_EQ(Party::calls, entered ? 1 : 0) << order << " " << step;
        }
        Handler another;
        if (cutOff) {  // which this one ends
            another.HookWindow(Wnd());
            Send();
            EXPECT_EQ(handled, 1) << order;
        }
        DestroyWindow(window_);
        EXPECT_TRUE(Map().IsEmpty());
        EXPECT_FALSE(handler.IsHooked(nullptr));
        ASSERT_FALSE(HasFailure());
        CWnd::DeleteTempMap();
        Make();
    }
}

}  // namespace
