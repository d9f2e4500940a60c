// The notification centre. What is shown and taken away is noted; a test presses.
#import "platform/macos/check/standin/StandIns.h"

#import <UserNotifications/UserNotifications.h>

#include <cstdlib>

static UNNotificationRequest* shown; ///< last, also when it has gone

@implementation UNNotificationAction
@end

@implementation UNNotificationCategory
@end

@implementation UNNotificationContent
@end

@implementation UNMutableNotificationContent
@end

@implementation UNNotificationRequest
@end

@implementation UNUserNotificationCenter

- (void)requestAuthorizationWithOptions:(UNAuthorizationOptions)options
                      completionHandler:(void (^)(BOOL granted, NSError* error))done {
    done(std::getenv("KELPA_TEST_NO_NOTIFICATIONS") == nullptr, nil);
}

- (void)addNotificationRequest:(UNNotificationRequest*)request
         withCompletionHandler:(void (^)(NSError* error))done {
    shown = request;
    NSArray* categories = [recordOf(self)[@"notificationCategories"] allObjects];
    note(@"notification", @{@"request" : request, @"categories" : categories});
    done(nil);
}

- (void)removePendingNotificationRequestsWithIdentifiers:(NSArray*)identifiers {
}

- (void)removeDeliveredNotificationsWithIdentifiers:(NSArray*)identifiers {
    if (shown && [identifiers containsObject:[shown identifier]])
        note(@"notification gone", @{});
}

@end

@implementation Driver (Notifications)

/// A press on the notification that was shown last, also when it has gone: some presses come late.
+ (id)pressAction:(NSDictionary*)asked {
    NSObject* notification = [[NSObject alloc] init];
    NSObject* response = [[NSObject alloc] init];
    recordOf(notification)[@"request"] = shown;
    recordOf(response)[@"notification"] = notification;
    recordOf(response)[@"actionIdentifier"] = asked[@"action"];
    UNUserNotificationCenter* center = [UNUserNotificationCenter currentNotificationCenter];
    [[center delegate] userNotificationCenter:center
               didReceiveNotificationResponse:static_cast<id>(response)
                        withCompletionHandler:^{
                        }];
    return nil;
}

@end
