#import "platform/macos/MacPorts.h"

#import <Foundation/Foundation.h>
#import <UserNotifications/UserNotifications.h>

#import "platform/macos/Bridge.h"

#include "logging/SharedLogger.h"

#include <utility>

namespace kelpa {

namespace {

/// What is shown now. Those who wait for the system hold it, which may be for longer than the notifications
/// live.
struct Shown {
    std::string id; ///< empty for nothing
    std::function<void(const std::string&)> pressed;
};

/// The system answers on threads of its own.
void onMainThread(void (^work)(void)) {
    dispatch_async(dispatch_get_main_queue(), work);
}

void warn(NSString* why) {
    logger().warning("The notification is not shown: " + toString(why));
}

} // namespace

} // namespace kelpa

/// Hears of presses, and lets notifications be seen while the program is in front.
@interface NotificationPresses : NSObject <UNUserNotificationCenterDelegate> {
  @public
    std::shared_ptr<kelpa::Shown> shown;
}
@end

@implementation NotificationPresses

- (void)userNotificationCenter:(UNUserNotificationCenter*)center
    didReceiveNotificationResponse:(UNNotificationResponse*)response
             withCompletionHandler:(void (^)(void))done {
    const std::string id = kelpa::toString([[[response notification] request] identifier]);
    const std::string action = kelpa::toString([response actionIdentifier]);
    const auto now = shown;
    kelpa::onMainThread(^{
      if (id != now->id)
          return;
      const auto pressed = now->pressed; // which may withdraw the notification
      kelpa::callCore([&] { pressed(action); });
    });
    done();
}

- (void)userNotificationCenter:(UNUserNotificationCenter*)center
       willPresentNotification:(UNNotification*)notification
         withCompletionHandler:(void (^)(UNNotificationPresentationOptions))present {
    present(UNNotificationPresentationOptionBanner | UNNotificationPresentationOptionList);
}

@end

namespace kelpa {

namespace {

constexpr const char* category = "break";

UNNotificationCategory* categoryOf(const Notification& notification) {
    NSMutableArray* actions = [NSMutableArray array];
    for (const NotificationAction& action : notification.actions)
        [actions addObject:[UNNotificationAction actionWithIdentifier:toNSString(action.id)
                                                                title:toNSString(action.label)
                                                              options:UNNotificationActionOptionNone]];
    return [UNNotificationCategory categoryWithIdentifier:@(category)
                                                  actions:actions
                                        intentIdentifiers:@[]
                                                  options:UNNotificationCategoryOptionNone];
}

UNNotificationRequest* requestOf(const Notification& notification, const std::string& id) {
    UNMutableNotificationContent* content = [[UNMutableNotificationContent alloc] init];
    [content setTitle:toNSString(notification.title)];
    [content setBody:toNSString(notification.body)];
    [content setCategoryIdentifier:@(category)];
    return [UNNotificationRequest requestWithIdentifier:toNSString(id) content:content trigger:nil];
}

class MacNotifications final : public Notifications {
  public:
    void show(const Notification& notification, std::function<void(const std::string&)> pressed) override {
        withdraw();
        *shown_ = {"break-" + std::to_string(++count_), std::move(pressed)};
        UNUserNotificationCenter* center = [UNUserNotificationCenter currentNotificationCenter];
        [center setDelegate:presses()];
        [center setNotificationCategories:[NSSet setWithObject:categoryOf(notification)]];
        UNNotificationRequest* request = requestOf(notification, shown_->id);
        const auto shown = shown_;
        const std::string id = shown_->id;
        [center requestAuthorizationWithOptions:UNAuthorizationOptionAlert
                              completionHandler:^(BOOL granted, NSError*) {
                                onMainThread(^{
                                  // Who asks the user may wait for long.
                                  if (id == shown->id)
                                      add(request, granted);
                                });
                              }];
    }

    void withdraw() override {
        const std::string gone = std::exchange(*shown_, {}).id;
        if (gone.empty())
            return;
        UNUserNotificationCenter* center = [UNUserNotificationCenter currentNotificationCenter];
        [center removePendingNotificationRequestsWithIdentifiers:@[ toNSString(gone) ]];
        [center removeDeliveredNotificationsWithIdentifiers:@[ toNSString(gone) ]];
    }

  private:
    static void add(UNNotificationRequest* request, BOOL granted) {
        if (!granted)
            return warn(@"the user does not allow notifications");
        [[UNUserNotificationCenter currentNotificationCenter] addNotificationRequest:request
                                                               withCompletionHandler:^(NSError* error) {
                                                                 if (error)
                                                                     onMainThread(^{
                                                                       warn([error localizedDescription]);
                                                                     });
                                                               }];
    }

    /// The centre does not keep its delegate.
    NotificationPresses* presses() {
        if (!presses_) {
            presses_ = [[NotificationPresses alloc] init];
            presses_->shown = shown_;
        }
        return presses_;
    }

    std::shared_ptr<Shown> shown_ = std::make_shared<Shown>();
    NotificationPresses* presses_ = nil;
    int count_ = 0;
};

} // namespace

std::unique_ptr<Notifications> makeMacNotifications() {
    return std::make_unique<MacNotifications>();
}

} // namespace kelpa
