// The notification centre. What is shown and taken away is noted; a test presses.
#import "platform/macos/check/driver/Commands.h"
#import "platform/macos/check/standin/StandIns.h"

#import <UserNotifications/UserNotifications.h>

#include <cstdlib>

@implementation UNNotificationAction

+ (instancetype)actionWithIdentifier:(NSString*)identifier
                               title:(NSString*)title
                             options:(UNNotificationActionOptions)options {
    UNNotificationAction* action = [[self alloc] init];
    recordOf(action)[@"what"] = @[ identifier, title ];
    return action;
}

@end

@implementation UNNotificationCategory

+ (instancetype)categoryWithIdentifier:(NSString*)identifier
                               actions:(NSArray*)actions
                     intentIdentifiers:(NSArray*)intents
                               options:(UNNotificationCategoryOptions)options {
    UNNotificationCategory* category = [[self alloc] init];
    NSMutableArray* all = [NSMutableArray array];
    for (UNNotificationAction* action in actions)
        [all addObject:recordOf(action)[@"what"]];
    recordOf(category)[@"identifier"] = identifier;
    recordOf(category)[@"actions"] = all;
    return category;
}

@end

@implementation UNNotificationContent
@end

@implementation UNMutableNotificationContent

- (void)setTitle:(NSString*)title {
    recordOf(self)[@"title"] = title;
}

- (void)setBody:(NSString*)body {
    recordOf(self)[@"body"] = body;
}

- (void)setCategoryIdentifier:(NSString*)identifier {
    recordOf(self)[@"category"] = identifier;
}

@end

@implementation UNNotificationRequest

+ (instancetype)requestWithIdentifier:(NSString*)identifier
                              content:(UNNotificationContent*)content
                              trigger:(UNNotificationTrigger*)trigger {
    UNNotificationRequest* request = [[self alloc] init];
    recordOf(request)[@"identifier"] = identifier;
    recordOf(request)[@"content"] = content;
    return request;
}

- (NSString*)identifier {
    return recordOf(self)[@"identifier"];
}

@end

@implementation UNNotification

- (UNNotificationRequest*)request {
    return recordOf(self)[@"request"];
}

@end

@implementation UNNotificationResponse

- (UNNotification*)notification {
    return recordOf(self)[@"notification"];
}

- (NSString*)actionIdentifier {
    return recordOf(self)[@"action"];
}

@end

@implementation UNUserNotificationCenter

+ (UNUserNotificationCenter*)currentNotificationCenter {
    static id center = [[self alloc] init];
    return center;
}

- (void)setDelegate:(id<UNUserNotificationCenterDelegate>)delegate {
    recordOf(self)[@"delegate"] = delegate;
}

- (void)setNotificationCategories:(NSSet*)categories {
    recordOf(self)[@"category"] = [categories anyObject];
}

- (void)requestAuthorizationWithOptions:(UNAuthorizationOptions)options
                      completionHandler:(void (^)(BOOL granted, NSError* error))done {
    done(std::getenv("KELPA_TEST_NO_NOTIFICATIONS") == nullptr, nil);
}

- (void)addNotificationRequest:(UNNotificationRequest*)request
         withCompletionHandler:(void (^)(NSError* error))done {
    NSDictionary* content = recordOf(recordOf(request)[@"content"]);
    NSDictionary* category = recordOf(recordOf(self)[@"category"]);
    recordOf(self)[@"request"] = request;
    note(@"notification", @{
        @"title" : content[@"title"],
        @"body" : content[@"body"],
        @"actions" : [content[@"category"] isEqual:category[@"identifier"]] ? category[@"actions"] : @[]
    });
    done(nil);
}

- (void)removePendingNotificationRequestsWithIdentifiers:(NSArray*)identifiers {
}

- (void)removeDeliveredNotificationsWithIdentifiers:(NSArray*)identifiers {
    NSString* shown = [recordOf(self)[@"request"] identifier];
    if (shown && [identifiers containsObject:shown])
        note(@"notification gone", @{});
}

@end

namespace {

/// A press on the notification that was shown last, also when it has gone: some presses come late.
id pressAction(NSDictionary* asked) {
    UNUserNotificationCenter* center = [UNUserNotificationCenter currentNotificationCenter];
    id<UNUserNotificationCenterDelegate> delegate = recordOf(center)[@"delegate"];
    if (!recordOf(center)[@"request"])
        return driver::problem(@"No notification was shown");
    UNNotification* notification = [[UNNotification alloc] init];
    recordOf(notification)[@"request"] = recordOf(center)[@"request"];
    UNNotificationResponse* response = [[UNNotificationResponse alloc] init];
    recordOf(response)[@"notification"] = notification;
    recordOf(response)[@"action"] = asked[@"action"];
    [delegate userNotificationCenter:center
        didReceiveNotificationResponse:response
                 withCompletionHandler:^{
                 }];
    standin::settleQueues();
    return nil;
}
const driver::Registration actionCommand("press action", pressAction);

} // namespace
