#include "Core/Support/WorkerPool.h"

#include "Core/Support/Mailbox.h"
#include "support/Wait.h"

#include <QElapsedTimer>
#include <QSemaphore>
#include <QThread>
#include <atomic>
#include <gmock/gmock.h>

namespace Tavrin {
namespace {

using Testing::drainEvents;
using Testing::waitFor;

/// What jobs that "hang" wait for; shared, since they outlive the test's own objects.
struct Gate {
    QSemaphore open;
    std::atomic<int> entered = 0;
    std::atomic<int> left = 0;

    void pass()
    {
        ++entered;
        open.acquire();
        ++left;
    }
};

TEST(Workers, RunEveryJobOffTheMainThread)
{
    WorkerPool pool;
    std::atomic<int> done = 0;
    std::atomic<int> onMainThread = 0;
    for (int job = 0; job < 200; ++job) {
        pool.run([&] {
            onMainThread += QThread::currentThread() == QCoreApplication::instance()->thread() ? 1 : 0;
            ++done;
        });
    }
    EXPECT_TRUE(waitFor([&] { return done == 200; }));
    EXPECT_EQ(onMainThread, 0);
}

TEST(Workers, AreAsManyAsTheyMayBe)
{
    auto gate = std::make_shared<Gate>();
    WorkerPool pool(2);
    for (int job = 0; job < 6; ++job)
        pool.run([gate] { gate->pass(); });
    ASSERT_TRUE(waitFor([&] { return gate->entered == 2; }));
    gate->open.release(1);
    ASSERT_TRUE(waitFor([&] { return gate->entered == 3; }));
    EXPECT_EQ(gate->left, 1);
    gate->open.release(5);
    EXPECT_TRUE(waitFor([&] { return gate->left == 6; }));
}

TEST(Workers, DelayNoJobBehindHungOnes)
{
    auto gate = std::make_shared<Gate>();
    WorkerPool pool;
    constexpr int hung = WorkerPool::threadLimit - 1;
    for (int job = 0; job < hung; ++job)
        pool.run([gate] { gate->pass(); });
    ASSERT_TRUE(waitFor([&] { return gate->entered == hung; }));
    std::atomic<bool> done = false;
    pool.run([&] { done = true; });
    EXPECT_TRUE(waitFor([&] { return done.load(); }));
    EXPECT_EQ(gate->left, 0);
    gate->open.release(hung);
    EXPECT_TRUE(waitFor([&] { return gate->left == hung; }));
}

TEST(Workers, AreLimitedAndKeepFurtherJobsForLater)
{
    auto gate = std::make_shared<Gate>();
    WorkerPool pool;
    constexpr int jobs = WorkerPool::threadLimit + 4;
    for (int job = 0; job < jobs; ++job)
        pool.run([gate] { gate->pass(); });
    ASSERT_TRUE(waitFor([&] { return gate->entered == WorkerPool::threadLimit; }));
    drainEvents();
    EXPECT_EQ(gate->entered, WorkerPool::threadLimit);
    gate->open.release(jobs);
    EXPECT_TRUE(waitFor([&] { return gate->left == jobs; }));
}

TEST(Workers, EndWithoutWaitingForAHungJob)
{
    auto gate = std::make_shared<Gate>();
    QElapsedTimer timer;
    {
        WorkerPool pool;
        pool.run([gate] { gate->pass(); });
        ASSERT_TRUE(waitFor([&] { return gate->entered == 1; }));
        timer.start();
    }
    EXPECT_LT(timer.elapsed(), 5000);
    EXPECT_EQ(gate->left, 0);
    gate->open.release();
    EXPECT_TRUE(waitFor([&] { return gate->left == 1; }));
}

TEST(Workers, EndWithoutAJobAtOnce)
{
    QElapsedTimer timer;
    timer.start();
    {
        const WorkerPool unused;
        WorkerPool used;
        std::atomic<bool> done = false;
        used.run([&] { done = true; });
        ASSERT_TRUE(waitFor([&] { return done.load(); }));
    }
    EXPECT_LT(timer.elapsed(), 5000);
}

TEST(MailboxCalls, ComeToTheOwnersThreadInOrder)
{
    const Mailbox mailbox;
    WorkerPool pool;
    QList<int> received;
    bool sameThread = true;
    pool.run([&, address = mailbox.address()] {
        for (int number = 0; number < 3; ++number) {
            address.post([&, number] {
                sameThread = sameThread && QThread::currentThread() == QCoreApplication::instance()->thread();
                received.append(number);
            });
        }
    });
    ASSERT_TRUE(waitFor([&] { return received.size() == 3; }));
    EXPECT_THAT(received, testing::ElementsAre(0, 1, 2));
    EXPECT_TRUE(sameThread);
}

TEST(MailboxCalls, AreDroppedWhenTheyComeTooLate)
{
    auto gate = std::make_shared<Gate>();
    bool called = false;
    std::weak_ptr<int> cargo;
    {
        const Mailbox mailbox;
        WorkerPool pool;
        // One call is on its way when the mailbox ends, another comes when it has ended.
        auto load = std::make_shared<int>(1);
        cargo = load;
        mailbox.address().post([&called, load] { called = true; });
        load.reset();
        pool.run([&called, gate, address = mailbox.address()] {
            gate->pass();
            address.post([&called] { called = true; });
            ++gate->left;
        });
        // Without the event loop, which would deliver the first.
        while (gate->entered == 0)
            QThread::usleep(200);
    }
    gate->open.release();
    ASSERT_TRUE(waitFor([&] { return gate->left == 2; }));
    drainEvents();
    EXPECT_FALSE(called);
    EXPECT_TRUE(cargo.expired());
}

} // namespace
} // namespace Tavrin
