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
        CSingletonManager::Instance()->Register(successor_);
    }
    CString GetType() override { return _T("Service\n"); }

private:
    char letter_;
    Service* successor_;
};

TEST(Singletons, EndWithTheirManagerInTheOrderOfRegistration) {
    ended.clear();
    CSingletonManager* manager = CSingletonManager::Instance();
    EXPECT_EQ(manager, CSingletonManager::Instance());
    EXPECT_EQ(manager->GetType(), CString(_T("Singleton Manager\n")));
    manager->Register(nullptr);
    manager->Register(new Service('B'));
    manager->Register(new Service('A', new Service('D')));  // D is registered by the end of A
    manager->Register(new Service('C'));
    delete CSingletonManager::Instance();
    EXPECT_EQ(ended, "BACD");
    delete CSingletonManager::Instance();  // a fresh one, which owns nothing
    EXPECT_EQ(ended, "BACD");
    EXPECT_EQ(CSingletonManager::m_Instance, nullptr);
}

TEST(Singletons, HaveAManagerThatItsRunTimeClassCanMake) {
    std::unique_ptr<CObject> other(RUNTIME_CLASS(CSingletonManager)->CreateObject());
    EXPECT_EQ(CSingletonManager::m_Instance, nullptr);
    EXPECT_STREQ(other->GetRuntimeClass()->m_lpszClassName, "CSingletonManager");
    EXPECT_TRUE(test::StoredBytes([&](CArchive& archive) { other->Serialize(archive); }).empty());
    const std::unique_ptr<CSingletonManager> manager(CSingletonManager::Instance());
    other.reset();  // resets the process's manager too
    EXPECT_EQ(CSingletonManager::m_Instance, nullptr);
}

}  // namespace
