#include <gtest/gtest.h>
#include <kadata/singleton.h>

#include <memory>
#include <string>

#include "support/archive_bytes.h"

namespace {

std::string ended;  // the letters of the services, in the order of their end

class Service : public CSingleton {
public:
    explicit Service(char letter, Service* successor = nullptr) : letter_(letter), successor_(successor) {}
    ~Service() override {
        ended += letter_;
        if (successor_ != nullptr) {
            CSingletonManager::Instance()->Register(successor_);
        }
    }
    CString GetType() override { return _T("Service\n"); }

private:
    char letter_;
    Service* successor_;
};

class LazyService : public CSingleton {
public:
    static LazyService* Instance() {
        if (m_Instance == nullptr) {
            m_Instance = new LazyService;
            CSingletonManager::Instance()->Register(m_Instance);
        }
        return m_Instance;
    }
    CString GetType() override { return _T("Lazy Service\n"); }

    static LazyService* m_Instance;

private:
    LazyService() = default;
    ~LazyService() override { ended += 'L'; }
};
LazyService* LazyService::m_Instance = nullptr;

class Singletons : public testing::Test {
protected:
    void SetUp() override { ended.clear(); }
    void TearDown() override { EXPECT_EQ(CSingletonManager::m_Instance, nullptr); }
};

TEST_F(Singletons, EndWithTheirManagerInTheOrderOfRegistration) {
    CSingletonManager* manager = CSingletonManager::Instance();
    EXPECT_EQ(manager, CSingletonManager::Instance());
    EXPECT_EQ(manager->GetType(), CString(_T("Singleton Manager\n")));
    for (const char letter : {'B', 'A', 'C'}) {
        manager->Register(new Service(letter));
    }
    delete CSingletonManager::Instance();
    EXPECT_EQ(ended, "BAC");
}

TEST_F(Singletons, MakeTheManagerWhenTheyAreFirstAskedForAndStayGoneAfterIt) {
    LazyService* service = LazyService::Instance();
    EXPECT_NE(CSingletonManager::m_Instance, nullptr);
    EXPECT_EQ(service, LazyService::Instance());
    delete CSingletonManager::Instance();
    EXPECT_EQ(ended, "L");

    EXPECT_EQ(LazyService::Instance(), service);  // the old address: nothing comes back to life
    EXPECT_EQ(CSingletonManager::m_Instance, nullptr);
    delete CSingletonManager::Instance();  // a fresh manager owns nothing
    EXPECT_EQ(ended, "L");
    LazyService::m_Instance = nullptr;
}

TEST_F(Singletons, AreDestroyedTooWhenTheEndOfAnotherRegistersThem) {
    CSingletonManager::Instance()->Register(nullptr);
    CSingletonManager::Instance()->Register(new Service('A', new Service('B')));
    delete CSingletonManager::Instance();
    EXPECT_EQ(ended, "AB");
}

TEST_F(Singletons, ManagerCanBeMadeByItsRunTimeClass) {
    CRuntimeClass* record = RUNTIME_CLASS(CSingletonManager);
    EXPECT_STREQ(record->m_lpszClassName, "CSingletonManager");
    EXPECT_EQ(record, CSingletonManager::GetThisClass());
    std::unique_ptr<CObject> other(record->CreateObject());
    EXPECT_EQ(CSingletonManager::m_Instance, nullptr);
    EXPECT_EQ(other->GetRuntimeClass(), record);
    EXPECT_TRUE(other->IsSerializable());
    EXPECT_TRUE(test::StoredBytes([&](CArchive& archive) { other->Serialize(archive); }).empty());

    // Its end resets the process's manager too.
    const std::unique_ptr<CSingletonManager> manager(CSingletonManager::Instance());
    other.reset();
    EXPECT_EQ(CSingletonManager::m_Instance, nullptr);
}

}  // namespace
