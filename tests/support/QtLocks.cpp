// Qt is not built for the check for data races and locks with system calls that the check does not see. Programs that
// are checked therefore answer for Qt's locks themselves: each function tells what it orders and leaves the work to the
// function of Qt that it replaces.

#include <QDeadlineTimer>
#include <QMutex>
#include <QWaitCondition>

#include <dlfcn.h>

extern "C" void __tsan_acquire(void *);
extern "C" void __tsan_release(void *);

namespace {

template <typename Function> Function next(const char *mangledName)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, mangledName));
}

// A wait gives the lock up, and holds it again at its end.
template <typename Wait> bool ordered(QWaitCondition *condition, QMutex *mutex, Wait wait)
{
    __tsan_release(mutex);
    const bool woken = wait();
    __tsan_acquire(mutex);
    __tsan_acquire(condition);
    return woken;
}

} // namespace

#define VISIBLE __attribute__((visibility("default")))

VISIBLE void QMutex::lock() QT_MUTEX_LOCK_NOEXCEPT
{
    static const auto qtLock = next<void (*)(QMutex *)>("_ZN6QMutex4lockEv");
    qtLock(this);
    __tsan_acquire(this);
}

VISIBLE bool QMutex::tryLock(int timeout) QT_MUTEX_LOCK_NOEXCEPT
{
    static const auto qtTryLock = next<bool (*)(QMutex *, int)>("_ZN6QMutex7tryLockEi");
    if (!qtTryLock(this, timeout))
        return false;
    __tsan_acquire(this);
    return true;
}

VISIBLE void QMutex::unlock() noexcept
{
    static const auto qtUnlock = next<void (*)(QMutex *)>("_ZN6QMutex6unlockEv");
    __tsan_release(this);
    qtUnlock(this);
}

VISIBLE bool QWaitCondition::wait(QMutex *mutex, unsigned long time)
{
    static const auto qtWait =
        next<bool (*)(QWaitCondition *, QMutex *, unsigned long)>("_ZN14QWaitCondition4waitEP6QMutexm");
    return ordered(this, mutex, [&] { return qtWait(this, mutex, time); });
}

VISIBLE bool QWaitCondition::wait(QMutex *mutex, QDeadlineTimer deadline)
{
    static const auto qtWait = next<bool (*)(QWaitCondition *, QMutex *, QDeadlineTimer)>(
        "_ZN14QWaitCondition4waitEP6QMutex14QDeadlineTimer");
    return ordered(this, mutex, [&] { return qtWait(this, mutex, deadline); });
}

VISIBLE void QWaitCondition::wakeOne()
{
    static const auto qtWake = next<void (*)(QWaitCondition *)>("_ZN14QWaitCondition7wakeOneEv");
    __tsan_release(this);
    qtWake(this);
}

VISIBLE void QWaitCondition::wakeAll()
{
    static const auto qtWake = next<void (*)(QWaitCondition *)>("_ZN14QWaitCondition7wakeAllEv");
    __tsan_release(this);
    qtWake(this);
}
