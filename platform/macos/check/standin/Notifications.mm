// The notification centre. What is shown and taken away is noted; a test presses.
#import "platform/macos/check/standin/StandIns.h"

#import <UserNotifications/UserNotifications.h>

#include <cstdlib>

namespace {

UNNotificationRequest* shown; ///< last, also when it has gone

/// Also what nobody else may set.
id make(Class kind, NSDictionary* properties) {
    id made = [[kind alloc] init];
    [made setValuesForKeysWithDictionary:properties];
    return made;
}

} // namespace

@implementation UNNotificationAction

+ (instancetype)actionWithIdentifier:(NSString*)identifier
                               title:(NSString*)title
                             options:(UNNotificationActionOptions)options {
    return make(self, @{@"identifier" : identifier, @"title" : title});
}

@end

@implementation UNNotificationCategory

+ (instancetype)categoryWithIdentifier:(NSString*)identifier
                               actions:(NSArray*)actions
                     intentIdentifiers:(NSArray*)intents
                               options:(UNNotificationCategoryOptions)options {
    return make(self, @{@"identifier" : identifier, @"actions" : actions});
}

@end

@implementation UNNotificationContent
@end

@implementation UNMutableNotificationContent
@end

@implementation UNNotificationRequest

+ (instancetype)requestWithIdentifier:(NSString*)identifier
                              content:(UNNotificationContent*)content
                              trigger:(UNNotificationTrigger*)trigger {
    return make(self, @{@"identifier" : identifier, @"content" : content});
}

@end

@implementation UNNotification
@end

@implementation UNNotificationResponse
@end

@implementation UNUserNotificationCenter

+ (UNUserNotificationCenter*)currentNotificationCenter {
    static id center = [[self alloc] init];
    return center;
}

- (void)requestAuthorizationWithOptions:(UNAuthorizationOptions)options
                      completionHandler:(void (^)(BOOL granted, NSError* error))done {
    done(std::getenv("KELPA_TEST_NO_NOTIFICATIONS") == nullptr, nil);
}

- (void)addNotificationRequest:(UNNotificationRequest*)request
         withCompletionHandler:(void (^)(NSError* error))done {
    shown = request;
    UNNotificationCategory* category = [recordOf(self)[@"notificationCategories"] anyObject];
    NSDictionary* content =
        [[request content] dictionaryWithValuesForKeys:@[ @"title", @"body", @"categoryIdentifier" ]];
    NSMutableDictionary* told = [content mutableCopy];
    told[@"category"] = [category identifier];
    told[@"actions"] = [category valueForKeyPath:@"actions.identifier"];
    told[@"labels"] = [category valueForKeyPath:@"actions.title"];
    note(@"notification", told);
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
    id notification = make([UNNotification class], @{@"request" : shown});
    id response = make([UNNotificationResponse class],
                       @{@"notification" : notification, @"actionIdentifier" : asked[@"action"]});
    UNUserNotificationCenter* center = [UNUserNotificationCenter currentNotificationCenter];
    [[center delegate] userNotificationCenter:center
               didReceiveNotificationResponse:response
                        withCompletionHandler:^{
                        }];
    return nil;
}

@end
